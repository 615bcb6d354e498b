
#include "completion/Completions.h"
#include "tags/Tags.h"
#include "tests/completion/NamedTags.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BListView.h"

namespace {

constexpr char kMore[] = "     ... more";

// A list that is in no window.
class List {
public:
    ~List()
    {
        while (BListItem* item = view.RemoveItem(0))
            delete item;
    }
    Lines Texts() const
    {
        Lines texts;
        for (long i = 0; i < view.CountItems(); ++i)
            texts.push_back(static_cast<const BStringItem*>(view.ItemAt(i))->Text());
        return texts;
    }

    BListView view{{0, 0, 100, 100}, "list", B_SINGLE_SELECTION_LIST, 0, 0};
};

// The two ways to fill it, one for each command.
using Fill = void (*)(const Lines& names, BListView* list);

void FillAsTyped(const Lines& names, BListView* list)
{
    Tags unused(nullptr, nullptr, "", false);
    AutoCompletionPopulator(&names).Populate(unused, list);
}

void FillAsCommanded(const Lines& names, BListView* list)
{
    const TagsFolder folder(TagsOf(names));
    const BEntry entry = folder.Entry();
    Tags tags(&entry, nullptr, "n", false);
    Completions completions(tags);
    Tags unused(nullptr, nullptr, "", false);
    completions.Populate(unused, list);
}

constexpr Fill kFills[] = {FillAsTyped, FillAsCommanded};

struct Case {
    const char* why;
    int names;
    long items;
    bool saysMore;
    long selected;
};

const Case kCases[] = {
    {"none", 0, 0, false, -1},
    {"one", 1, 1, false, 0},
    {"one less than are listed", 199, 199, false, 0},
    {"as many as are listed", 200, 200, false, 0},
    {"one more: an item for the rest of one", 201, 201, true, 0},
    {"many more: still one item for the rest", 250, 201, true, 0},
    {"as many as the command finds", 1000, 201, true, 0},
};

TEST(ListCandidates, CountsTheCandidates)
{
    for (const Fill fill : kFills)
        for (const Case& row : kCases) {
            List list;
            const Lines names = Numbered("name", row.names);
            fill(names, &list.view);
            ASSERT_EQ(list.view.CountItems(), row.items) << row.why;
            EXPECT_EQ(list.view.CurrentSelection(), row.selected) << row.why;
            Lines expected(names.begin(), names.begin() + std::min(row.names, 200));
            if (row.saysMore)
                expected.push_back(kMore);
            EXPECT_EQ(list.Texts(), expected) << row.why;
        }
}

// A user who walks down with the arrows comes to it, and sees that there is more.
TEST(ListCandidates, TheMoreEntryIsAnOrdinaryItem)
{
    for (const Fill fill : kFills) {
        List list;
        fill(Numbered("name", 201), &list.view);
        for (long i = 0; i < 201; ++i) {
            const BListItem* item = list.view.ItemAt(i);
            EXPECT_NE(dynamic_cast<const BStringItem*>(item), nullptr) << i;
            EXPECT_EQ(item->OutlineLevel(), 0u) << i;
            EXPECT_TRUE(item->IsExpanded()) << i;
        }
        list.view.Select(200);
        EXPECT_EQ(list.view.CurrentSelection(), 200);
    }
}

TEST(ListCandidates, ShowsNamesUnchanged)
{
    const Lines names = {"zebra", "A::b", "initWithFrame:style:", "\xff\xfe", "", "operator ()"};
    List list;
    ListCandidates(names, &list.view);
    EXPECT_EQ(list.Texts(), names) << "in no other order";
}

TEST(ListCandidates, SelectsTheFirstEntry)
{
    List list;
    list.view.AddItem(new BStringItem("was there before"));
    ListCandidates({"a", "b"}, &list.view);
    EXPECT_EQ(list.Texts(), (Lines{"was there before", "a", "b"}));
    EXPECT_EQ(list.view.CurrentSelection(), 0);
    list.view.Select(2);
    ListCandidates({}, &list.view);
    EXPECT_EQ(list.view.CurrentSelection(), 0) << "also when it adds nothing";
}

} // namespace
