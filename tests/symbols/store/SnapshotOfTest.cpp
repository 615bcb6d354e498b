#include "tests/support/SnapshotOf.h"

using namespace symbols;

TEST(SnapshotOf, HasTheSymbolsOfProjectAndSystem)
{
    const SnapshotPointer snapshot = SnapshotOf({{"a.cpp", "#include <b.h>\nclass Derived : n::Base<int> { int x; };"},
                                                 {"/usr/include/b.h", "template <class T> class Base {};"}});
    const Symbols derived = snapshot->DerivedFrom("n::Base", {});
    ASSERT_EQ(derived.found.size(), 1u);
    EXPECT_EQ(derived.found.front().name, "Derived");
    EXPECT_EQ(snapshot->InScope("Derived", {}).found.front().name, "x");
    const auto header = snapshot->FindFile("/usr/include/b.h");
    ASSERT_TRUE(header);
    EXPECT_TRUE(snapshot->FileOf(*header).isSystem);
    EXPECT_EQ(snapshot->ByName("Base", {}).found.front().file, *header);
    ASSERT_EQ(snapshot->IncludesOfLeaf("b.h", {}).size(), 1u);
    EXPECT_EQ(snapshot->FilesMentioning("Derived", {}).size(), 1u);
}
