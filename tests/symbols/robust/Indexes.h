// Indexes of a tree in directories of their own, for comparing one that was updated with one made from nothing.
#pragma once

#include "symbols/Index.h"
#include "tests/support/AnswersOf.h"
#include "tests/support/TempDirectory.h"

#include <string>

inline tagging::Settings PlainTagging()
{
    tagging::Settings settings;
    settings.ctags.program = "/usr/bin/ctags-universal";
    settings.ctags.temporaries = "/tmp";
    settings.ctags.directory = "/tmp";
    settings.ctags.prototypes = true;
    settings.jobs = 2;
    return settings;
}

inline symbols::IndexOptions OptionsFor(const std::string& root, const std::string& cache)
{
    symbols::IndexOptions options;
    options.root = root;
    options.cache = cache;
    options.tagging = PlainTagging();
    return options;
}

// Updates the index; returns what went wrong, "" for nothing.
inline std::string UpdateError(symbols::Index& index)
{
    const base::CancelToken cancel;
    const auto result = index.Update({}, cancel);
    return result ? result->warning : result.Failure().Message();
}

// What an index made from nothing answers.
inline std::string FreshAnswers(const std::string& root, const std::set<std::string>& words)
{
    const TempDirectory cache;
    symbols::Index index(OptionsFor(root, cache.Path()));
    const std::string error = UpdateError(index);
    return error.empty() ? AnswersOf::Of(index.Current(), words) : error;
}
