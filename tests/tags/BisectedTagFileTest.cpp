// Files that are known to be in order are bisected. Bisecting finds the same as reading them from the beginning, and
// continues at the same place.

#include "tests/tags/LiteralTagFile.h"
#include "tests/tagsfile/LearnedOrder.h"
#include "tests/tagsfile/Sequence.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

using namespace std::string_literals;

namespace {

// The thread sanitizer gains nothing from a test with one thread, and would take minutes: a fifth is enough.
#if defined(__SANITIZE_THREAD__)
constexpr size_t kManyRounds = 400;
#else
constexpr size_t kManyRounds = 2000;
#endif

const std::string kStarts[] = {"a",          "b",          "get",       "set",      "std",       "~",
                               "operator",   "operator <", "init",      "initWith", "operator<", "operator<<",
                               "operator()", "vector<",    "vector<in", "\xc3\xa4", "Z",         "_",
                               "9",          "a<b>",       "a<b>::"};
const std::string kRests[] = {"",    "a",  "b",    "ab",   "<int>", "<int>c", ":",   ":b:", "Frame:", "Frame:style:",
                              "x<y", "aa", "name", "long", "zz",    "\xff",   "::c", "0",   "1",      "2"};
const std::string kSourcesNamed[] = {"a.cpp", "b.h", "gone.h", "./a.cpp"};
const std::string kScopeFields[] = {
    "", "", "\tclass:A", "\tnamespace:B::A", "\tclass:A<b>", "\tstruct:C\taccess:public"};

std::string Name(Sequence& sequence)
{
    std::string name = sequence.One(kStarts) + sequence.One(kRests);
    for (size_t more = sequence.Below(3); more > 0; --more)
        name += static_cast<char>('a' + sequence.Below(26));
    return name;
}

std::string Tag(Sequence& sequence)
{
    return Name(sequence) + "\t" + sequence.One(kSourcesNamed) + "\t" + std::to_string(sequence.Below(500)) + ";\"\tf" +
           sequence.One(kScopeFields) + "\n";
}

// Ways in which a file can be odd. Most of them leave it in order.
enum class Oddity {
    kNone,
    kDuplicates,
    kCarriageReturns,
    kNoNewlineAtEnd,
    kEmptyLines,
    kHead,
    kHeadOutOfOrder,
    kPseudoTagsWithin,
    kNulBytes,
    kControlBytes,
    kNoTags,
    kLongestLines, // also out of order or too long
    kTooLongLine,
    kLeadingTab,
    kOneOutOfOrder,
    kFolded,
    kCount
};

std::string Text(std::vector<std::string> lines, Sequence& sequence, Oddity oddity)
{
    switch (oddity) {
    case Oddity::kDuplicates:
        for (size_t i = lines.size() / 2; i > 0; --i)
            lines.push_back(lines[sequence.Below(20)]);
        break;
    case Oddity::kCarriageReturns:
        for (std::string& line : lines)
            line.insert(line.length() - 1, "\r");
        break;
    case Oddity::kEmptyLines:
        lines.insert(lines.end(), 9, "\n");
        break;
    case Oddity::kPseudoTagsWithin:
        lines.insert(lines.end(), {"!within\ta.cpp\t1;\"\tf\n", "!\n", " before\ta.cpp\t1;\"\tf\n"});
        break;
    case Oddity::kNulBytes:
        for (size_t i = 0; i < lines.size(); i += 1 + sequence.Below(9))
            lines[i].insert(sequence.Below(lines[i].length()), 1, '\0');
        break;
    case Oddity::kControlBytes:
        for (size_t i = 0; i < lines.size(); i += 1 + sequence.Below(9))
            lines[i].insert(lines[i].find('\t'), 1, static_cast<char>(1 + sequence.Below(8)));
        break;
    case Oddity::kNoTags:
        for (size_t i = 0; i < lines.size(); i += 1 + sequence.Below(9))
            lines[i] = lines[i].substr(0, lines[i].find('\t')) + "\n";
        break;
    case Oddity::kLongestLines:
        for (size_t i = 0; i < lines.size(); i += 1 + sequence.Below(30))
            lines[i].insert(lines[i].length() - 1, tagsfile::LineReader::kPieceSize - lines[i].length(), 'x');
        break;
    case Oddity::kTooLongLine:
        lines[sequence.Below(lines.size())] += "zzz" + std::string(1100, 'z') + "\n";
        break;
    case Oddity::kLeadingTab:
        lines[sequence.Below(lines.size())].insert(0, "\t");
        break;
    default:
        break;
    }
    const auto nameOf = [oddity](std::string line) {
        line = line.substr(0, line.find_first_of("\t\n"));
        if (oddity == Oddity::kFolded)
            for (char& character : line)
                character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        return line;
    };
    std::stable_sort(lines.begin(), lines.end(),
                     [&](const std::string& a, const std::string& b) { return nameOf(a) < nameOf(b); });
    if (oddity == Oddity::kOneOutOfOrder)
        std::swap(lines[sequence.Below(lines.size())], lines[sequence.Below(lines.size())]);
    if (oddity == Oddity::kHead || oddity == Oddity::kPseudoTagsWithin)
        lines.insert(lines.begin(), {"!_TAG_A\t1\t//\n", "!_TAG_B\t1\t//\n"});
    if (oddity == Oddity::kHeadOutOfOrder)
        lines.insert(lines.begin(), {"!_TAG_B\t1\t//\n", "!_TAG_A\t1\t//\n", "!\n"});
    std::string text;
    for (const std::string& line : lines)
        text += line;
    if (oddity == Oddity::kNoNewlineAtEnd)
        text.pop_back();
    return text;
}

std::string RandomTags(Sequence& sequence, Oddity oddity, size_t fewest = 200)
{
    std::vector<std::string> lines(fewest + sequence.Below(1500));
    for (std::string& line : lines)
        line = Tag(sequence);
    return Text(std::move(lines), sequence, oddity);
}

// Always a new file, since some systems write a replaced file to the disk at once.
void NewTags(const TagsFolder& folder, const std::string& text)
{
    std::filesystem::remove(folder.Tags());
    folder.WriteTags(text);
}

std::string Pattern(Sequence& sequence)
{
    static const std::string kOdd[] = {"",
                                       "<",
                                       "<int>",
                                       "!",
                                       "!within",
                                       " before",
                                       "\t",
                                       "a\tb",
                                       "\xff\xff",
                                       "\x01",
                                       "a\nb",
                                       "a\n",
                                       "::a",
                                       "A::",
                                       "A::get",
                                       "B::A::set",
                                       "operator",
                                       "operator<",
                                       "operator<=>",
                                       "operator <",
                                       "init:",
                                       "vector<int>",
                                       "vector<int>c",
                                       "vector<",
                                       "~a<b>",
                                       std::string(1100, 'a'),
                                       "a\0b"s,
                                       "zzzz",
                                       "zzz",
                                       "aa<"};
    switch (sequence.Below(4)) {
    case 0:
        return sequence.One(kOdd);
    case 1:
        return sequence.One(kStarts);
    case 2:
        return "A::" + Name(sequence);
    default:
        return Name(sequence);
    }
}

LiteralMatch AnyOf(Sequence& sequence)
{
    // Searches for any match take long, and do not bisect.
    if (sequence.Below(50) == 0)
        return LiteralMatch::Any;
    return sequence.Below(2) == 0 ? LiteralMatch::Exact : LiteralMatch::Partial;
}

} // namespace

TEST(BisectedTagFile, FindsTheSameAsTheLiteralReaderInAnyFile)
{
    const TagsFolder folder;
    Sequence sequence;
    size_t inOrder[static_cast<size_t>(Oddity::kCount)] = {};
    size_t matches = 0;
    constexpr size_t kRounds = kManyRounds;
    for (size_t round = 0; round < kRounds; ++round) {
        const auto oddity = static_cast<Oddity>(round % static_cast<size_t>(Oddity::kCount));
        NewTags(folder, RandomTags(sequence, oddity));
        MakeKnown(folder.Tags());
        inOrder[static_cast<size_t>(oddity)] += LearnedOrder(folder.Tags()).namesInOrder;
        for (int search = 0; search < 5; ++search) {
            const std::string pattern = Pattern(sequence);
            const LiteralMatch match = AnyOf(sequence);
            const bool stop = sequence.Below(5) == 0;
            const Lines expected = LiteralTagFile(folder.Tags(), pattern, match, stop).All();
            ASSERT_EQ(RealMatches(folder.Tags(), pattern, match, stop), expected)
                << "round " << round << ", pattern '" << pattern << "'";
            matches += expected.size() - 1;
        }
        MakeUnknown(folder.Tags());
    }
    EXPECT_GT(matches, 10 * kRounds) << "there was something to find";
    for (Oddity oddity = Oddity::kNone; oddity < Oddity::kCount;
         oddity = static_cast<Oddity>(static_cast<int>(oddity) + 1)) {
        const size_t count = inOrder[static_cast<size_t>(oddity)];
        if (oddity < Oddity::kTooLongLine) {
            EXPECT_GT(count, kRounds / 20) << "bisected: " << static_cast<int>(oddity);
        } else {
            EXPECT_LT(count, kRounds / 100) << "not bisected: " << static_cast<int>(oddity);
        }
    }
}

namespace {

// All calls of a reader, and their answers.
template <class Match>
std::string AnswerToMatch(TagFile& file, bool stop, Match match)
{
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    if (file.NextMatch(name, qualifier, kind, ref, line, stop, match))
        return Shown(name, qualifier, kind, ref, line);
    return "left: "s + (ref.name == nullptr ? "" : ref.name);
}

std::string Answer(TagFile& file, size_t question)
{
    switch (question) {
    case 0:
    case 1:
        return AnswerToMatch(file, false, TagFile::ExactMatch());
    case 2:
    case 3:
        return AnswerToMatch(file, false, TagFile::PartialMatch());
    case 4:
        return AnswerToMatch(file, true, TagFile::ExactMatch());
    case 5:
        return AnswerToMatch(file, true, TagFile::PartialMatch());
    case 6:
        return AnswerToMatch(file, false, TagFile::AnyMatch());
    case 7: {
        std::vector<char*> paths;
        file.LoadPathCache(paths);
        std::string all;
        for (char* path : paths) {
            all += path + " "s;
            std::free(path);
        }
        return all;
    }
    default:
        std::string name;
        std::string qualifier;
        return file.Next(name, qualifier) ? qualifier + "::" + name : "no more";
    }
}

Lines Answers(const std::string& path, const std::string& pattern, const std::vector<size_t>& questions)
{
    const BEntry tags(path.c_str());
    TagFile file(&tags, pattern, false);
    file.Rewind();
    Lines answers;
    for (const size_t question : questions)
        answers.push_back(Answer(file, question));
    file.Done();
    return answers;
}

} // namespace

TEST(BisectedTagFile, SearchesLearnTheSameOrderAsAWholePass)
{
    const TagsFolder folder;
    Sequence sequence(5);
    size_t inOrder = 0;
    constexpr size_t kRounds = 200;
    for (size_t round = 0; round < kRounds; ++round) {
        const auto oddity = static_cast<Oddity>(round % static_cast<size_t>(Oddity::kCount));
        NewTags(folder, RandomTags(sequence, oddity, 4000));
        const std::string name = Pattern(sequence);
        const BEntry tags = folder.Entry();
        TagFile file(&tags, name, false);
        ASSERT_TRUE(file.Rewind());
        AnswerToMatch(file, false, TagFile::PartialMatch());
        file.Done();
        const tagsfile::FileOrder expected = LearnedOrder(folder.Tags());
        const std::optional<tagsfile::FileOrder> order =
            tagsfile::KnownFiles::Instance().Find(IdentityOf(folder.Tags()));
        inOrder += order && order->namesInOrder;
        if (order) {
            ASSERT_EQ(order->namesInOrder, expected.namesInOrder) << "round " << round << ", pattern '" << name << "'";
            ASSERT_TRUE(!order->namesInOrder || order->headSize == expected.headSize) << "round " << round;
        }
        MakeUnknown(folder.Tags());
    }
    EXPECT_GT(inOrder, kRounds / 4);
}

TEST(BisectedTagFile, ReadingContinuesAfterASearchAsTheLiteralReaderDoes)
{
    const TagsFolder folder;
    Sequence sequence(7);
    size_t inOrder = 0;
    constexpr size_t kRounds = kManyRounds / 4 * 3;
    for (size_t round = 0; round < kRounds; ++round) {
        NewTags(folder, RandomTags(sequence, static_cast<Oddity>(round % static_cast<size_t>(Oddity::kTooLongLine))));
        const std::string pattern = Pattern(sequence);
        std::vector<size_t> questions(1 + sequence.Below(12));
        // Paths are read to the end, so they are asked for less often.
        std::generate(questions.begin(), questions.end(),
                      [&] { return sequence.Below(sequence.Below(8) == 0 ? 8 : 15); });
        std::replace(questions.begin(), questions.end() - 1, size_t(7), size_t(8));
        const Lines expected = Answers(folder.Tags(), pattern, questions);
        MakeKnown(folder.Tags());
        inOrder += LearnedOrder(folder.Tags()).namesInOrder;
        ASSERT_EQ(Answers(folder.Tags(), pattern, questions), expected)
            << "round " << round << ", pattern '" << pattern << "', " << testing::PrintToString(questions);
        MakeUnknown(folder.Tags());
    }
    EXPECT_GT(inOrder, kRounds / 2);
}
