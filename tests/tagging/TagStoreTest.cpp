#include "tagging/TagStore.h"

#include "tagsfile/TagLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

namespace tagging {
namespace {

using Texts = std::vector<std::string>;

Texts All(tagsfile::LineSource& lines)
{
    Texts all;
    for (std::string_view line; lines.Next(line);)
        all.emplace_back(line);
    return all;
}

class Listed : public tagsfile::LineSource {
public:
    explicit Listed(Texts lines) : lines(std::move(lines)) {}
    bool Next(std::string_view& line) override
    {
        if (position == lines.size())
            return false;
        line = lines[position++];
        return true;
    }

private:
    Texts lines;
    size_t position = 0;
};

Texts MergedTexts(const std::vector<Texts>& lists)
{
    std::vector<std::unique_ptr<tagsfile::LineSource>> sources;
    for (const Texts& list : lists)
        sources.push_back(std::make_unique<Listed>(list));
    return All(*tagsfile::Merged(std::move(sources)));
}

TEST(MergedLines, AreSortedWithoutDuplicates)
{
    EXPECT_EQ(MergedTexts({{"a\n", "c\n", "c\n"}, {}, {"a\n", "b\n", "d\n"}, {"c\n"}}),
              (Texts{"a\n", "b\n", "c\n", "d\n"}));
    EXPECT_EQ(MergedTexts({}), Texts{});
    EXPECT_EQ(MergedTexts({{"a\n", "\x80\n"}, {"z\n"}}), (Texts{"a\n", "z\n", "\x80\n"})) << "bytes are unsigned";
    EXPECT_EQ(MergedTexts({{""}, {""}}), Texts{""});
}

struct Sample {
    unsigned file;
    std::string name;
    unsigned line;
    char kind;
    std::string scope;
};

const Texts kFields = {"b.c", "a.c", "a.c.h", "a", "a.c", "a\x01.c", "/usr/include/x.h", std::string(990, 'l')};

// Names and scopes of few letters, so that the rest of the line decides too; some letters sort before a tab.
std::vector<Sample> Samples(size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    const auto word = [&random](size_t most) {
        std::string text;
        for (size_t length = random() % (most + 1); length > 0; --length)
            text += "ab<: \x80\x01\v"[random() % 8];
        return text;
    };
    std::vector<Sample> samples;
    for (size_t i = 0; i < count; ++i)
        samples.push_back({static_cast<unsigned>(random() % kFields.size()), "n" + word(random() % 2 ? 2 : 12),
                           static_cast<unsigned>(random() % 3 ? random() % 12 : random() % 2000), "fp"[random() % 2],
                           random() % 2 ? "class:" + word(2) + std::string(random() % 4 ? 0 : 20, 's') : ""});
    return samples;
}

Texts Expected(const std::vector<Sample>& samples)
{
    Texts lines;
    for (const Sample& sample : samples) {
        std::string line;
        if (tagsfile::AppendTagLine(line, {sample.name, sample.line, sample.kind, sample.scope}, kFields[sample.file]))
            lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

Texts Stored(const std::vector<Sample>& samples, size_t stores)
{
    std::vector<TagStore> all(stores);
    for (size_t i = 0; i < samples.size(); ++i)
        all[i % stores].Add(samples[i].file, {samples[i].name, samples[i].line, samples[i].kind, samples[i].scope});
    std::vector<std::unique_ptr<tagsfile::LineSource>> sources;
    TagsByFile leftOut;
    for (TagStore& store : all) {
        store.Sort(kFields);
        sources.push_back(store.Lines(kFields, &leftOut));
    }
    return All(*tagsfile::Merged(std::move(sources)));
}

TEST(TagStore, GivesTheSameSortedLinesForAnyNumberOfStores)
{
    const std::vector<Sample> samples = Samples(20000, 3);
    const Texts expected = Expected(samples);
    ASSERT_GT(expected.size(), 10000u);
    for (const size_t stores : {1, 2, 7})
        EXPECT_TRUE(Stored(samples, stores) == expected) << stores << " stores";
}

TEST(TagStore, CanBeSortedWhileOthersAre)
{
    const std::vector<Sample> samples = Samples(4000, 4);
    std::vector<TagStore> stores(3);
    for (size_t i = 0; i < samples.size(); ++i)
        stores[i % 3].Add(samples[i].file, {samples[i].name, samples[i].line, samples[i].kind, samples[i].scope});
    std::vector<std::thread> threads;
    for (TagStore& store : stores)
        threads.emplace_back([&store] { store.Sort(kFields); });
    for (std::thread& thread : threads)
        thread.join();
    std::vector<std::unique_ptr<tagsfile::LineSource>> sources;
    TagsByFile leftOut;
    for (const TagStore& store : stores)
        sources.push_back(store.Lines(kFields, &leftOut));
    EXPECT_TRUE(All(*tagsfile::Merged(std::move(sources))) == Expected(samples));
}

TEST(TagStore, MayBeEmpty)
{
    TagStore store;
    store.Sort({});
    TagsByFile leftOut;
    EXPECT_EQ(All(*store.Lines({}, &leftOut)), Texts{});
    EXPECT_EQ(store.Size(), 0u);
}

TEST(TagStore, CountsTheTagsThatAreTooLong)
{
    TagStore store;
    store.Add(0, {"fits", 1, 'f', ""});
    store.Add(0, {std::string(2000, 'x'), 1, 'f', ""});
    store.Add(0, {std::string(70000, 'x'), 1, 'f', ""});
    store.Add(1, {"fits", 1, 'f', ""});
    store.Add(2, {std::string(1020, 'x'), 1, 'f', ""});
    EXPECT_EQ(store.Size(), 5u);
    const Texts fields = {"a.c", "b.c", "c.c"};
    store.Sort(fields);
    TagsByFile leftOut;
    EXPECT_EQ(All(*store.Lines(fields, &leftOut)), (Texts{"fits\ta.c\t1;\"\tf\n", "fits\tb.c\t1;\"\tf\n"}));
    EXPECT_EQ(leftOut, (TagsByFile{{0, 2}, {2, 1}}));
}

TEST(TagStore, CopiesTheTextsItIsGiven)
{
    TagStore store;
    for (int i = 0; i < 3; ++i) {
        std::string name = "name" + std::to_string(i);
        std::string scope = "class:C";
        store.Add(0, {name, 1, 'f', scope});
        name.assign(name.size(), '?');
        scope.assign(scope.size(), '?');
    }
    const Texts fields = {"a.c"};
    store.Sort(fields);
    TagsByFile leftOut;
    EXPECT_EQ(
        All(*store.Lines(fields, &leftOut)),
        (Texts{"name0\ta.c\t1;\"\tf\tclass:C\n", "name1\ta.c\t1;\"\tf\tclass:C\n", "name2\ta.c\t1;\"\tf\tclass:C\n"}));
}

} // namespace
} // namespace tagging
