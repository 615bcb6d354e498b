// A host that counts what scanners ask of it.
#pragma once

#include "tests/support/FakeHost.h"

class CountingHost : public FakeHost {
public:
    using FakeHost::FakeHost;

    char CharAt(long offset) override
    {
        ++reads;
        return FakeHost::CharAt(offset);
    }
    long LineAt(long offset) override
    {
        ++lineQuestions;
        return everyOffsetIsALine ? lineQuestions : FakeHost::LineAt(offset);
    }

    long reads = 0;
    long lineQuestions = 0;
    bool everyOffsetIsALine = false;
};
