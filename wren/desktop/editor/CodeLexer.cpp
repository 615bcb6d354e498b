#include "wren/desktop/editor/CodeLexer.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace wren {

namespace {

constexpr const char* kEndings[] = {"c",   "cc",  "cp",  "cpp", "cxx", "c++", "h", "hh", "hpp", "hxx",
                                    "h++", "inc", "inl", "ipp", "tcc", "tpp", "m", "mm", "pch", "ixx"};

constexpr const char* kWords =
    "alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t char16_t char32_t class "
    "co_await "
    "co_return co_yield compl concept const const_cast consteval constexpr constinit continue decltype default delete "
    "do "
    "double dynamic_cast else enum explicit export extern false final float for friend goto if inline int long mutable "
    "namespace new noexcept not not_eq nullptr operator or or_eq override private protected public register "
    "reinterpret_cast requires restrict return short signed sizeof static static_assert static_cast struct switch "
    "template "
    "this thread_local throw true try typedef typeid typename typeof union unsigned using virtual void volatile "
    "wchar_t "
    "while xor xor_eq _Alignas _Alignof _Atomic _Bool _Complex _Generic _Imaginary _Noreturn _Static_assert "
    "_Thread_local";

constexpr const char* kWordsOfC =
    "alignas alignof auto bool break case char const constexpr continue default do double else enum extern false float "
    "for goto if inline int long nullptr register restrict return short signed sizeof static static_assert struct "
    "switch thread_local true typedef typeof union unsigned void volatile while _Alignas _Alignof _Atomic _Bool "
    "_Complex _Generic _Imaginary _Noreturn _Static_assert _Thread_local";

// Nobody can use them as names.
constexpr const char* kDirectives =
    "@autoreleasepool @available @catch @class @compatibility_alias @defs @dynamic @encode @end @finally "
    "@implementation "
    "@import @interface @optional @package @private @property @protected @protocol @public @required @selector "
    "@synchronized @synthesize @throw @try";

// Not those that are Objective-C's in one place only and anybody's names elsewhere: in, copy, strong, getter ...
constexpr const char* kNamesOfObjectiveC =
    " instancetype self super nil Nil YES NO BOOL SEL IMP Class Protocol "
    "nonatomic nullable nonnull null_resettable null_unspecified _Nullable _Nonnull __block __weak "
    "__strong __bridge __kindof __unsafe_unretained __autoreleasing NSInteger NSUInteger CGFloat unichar IBOutlet "
    "IBAction";

// Usual names in C, whose headers have the same endings.
constexpr const char* kOnlyInSources = " id readonly readwrite";

std::string EndingOf(const std::string& path)
{
    const size_t dot = path.find_last_of("./");
    if (dot == std::string::npos || path[dot] == '/')
        return "";
    std::string ending = path.substr(dot + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
    return ending;
}

const StyleColour kFamilyColours[] = {
    {QsciLexerCPP::Comment, &EditorColours::comment},
    {QsciLexerCPP::CommentLine, &EditorColours::comment},
    {QsciLexerCPP::CommentDoc, &EditorColours::comment},
    {QsciLexerCPP::CommentLineDoc, &EditorColours::comment},
    {QsciLexerCPP::CommentDocKeyword, &EditorColours::comment},
    {QsciLexerCPP::CommentDocKeywordError, &EditorColours::comment},
    {QsciLexerCPP::PreProcessorComment, &EditorColours::comment},
    {QsciLexerCPP::PreProcessorCommentLineDoc, &EditorColours::comment},
    {QsciLexerCPP::Number, &EditorColours::number},
    {QsciLexerCPP::UserLiteral, &EditorColours::number},
    {QsciLexerCPP::Keyword, &EditorColours::keyword},
    {QsciLexerCPP::KeywordSet2, &EditorColours::type},
    {QsciLexerCPP::PreProcessor, &EditorColours::preprocessor},
    {QsciLexerCPP::DoubleQuotedString, &EditorColours::string},
    {QsciLexerCPP::SingleQuotedString, &EditorColours::string},
    {QsciLexerCPP::UnclosedString, &EditorColours::string},
    {QsciLexerCPP::VerbatimString, &EditorColours::string},
    {QsciLexerCPP::RawString, &EditorColours::string},
    {QsciLexerCPP::EscapeSequence, &EditorColours::string},
};

} // namespace

CodeLexer::CodeLexer(QObject* parent) : QsciLexerCPP(parent)
{
    // @"..." is the lexer's verbatim string; in Objective-C a backslash escapes in it.
    setVerbatimStringEscapeSequencesAllowed(true);
}

bool CodeLexer::IsCode(const std::string& path)
{
    return std::find(std::begin(kEndings), std::end(kEndings), EndingOf(path)) != std::end(kEndings);
}

void CodeLexer::SetLanguageFor(const std::string& path, std::string_view beginning)
{
    other = IsCode(path) ? nullptr : LanguageOf(path, beginning);
    const std::string ending = EndingOf(path);
    if (!IsCode(path))
        language = Language::None;
    else if (ending == "m" || ending == "mm")
        language = Language::ObjectiveC;
    else if (ending.starts_with('h') || ending == "inc" || ending == "pch")
        language = Language::Header;
    else
        language = ending == "c" ? Language::C : Language::Cplusplus;
}

void CodeLexer::SetLook(const EditorLook& newLook)
{
    look = newLook;
}

const char* CodeLexer::keywords(int set) const
{
    if (other != nullptr)
        return set >= 1 && set <= static_cast<int>(std::size(other->words)) ? other->words[set - 1] : nullptr;
    if (language == Language::None)
        return nullptr;
    switch (set) {
    case kFirstSet:
        return language == Language::C ? kWordsOfC : kWords;
    case kObjectiveCSet: {
        static const std::string kHeaders = std::string(kDirectives) + kNamesOfObjectiveC;
        static const std::string kSources = kHeaders + kOnlyInSources;
        if (language == Language::Header)
            return kHeaders.c_str();
        return language == Language::ObjectiveC ? kSources.c_str() : kDirectives;
    }
    default:
        return QsciLexerCPP::keywords(set);
    }
}

const char* CodeLexer::lexer() const
{
    if (other != nullptr)
        return other->lexer;
    return language == Language::None && !separatesWords ? "null" : "cpp";
}

QColor CodeLexer::color(int style) const
{
    const EditorColours& colours = ColoursOf(look.dark);
    if (other == nullptr && language == Language::None)
        return colours.text;
    const std::span<const StyleColour> rows = other != nullptr ? other->colours : kFamilyColours;
    const auto row = std::ranges::find(rows, style, &StyleColour::style);
    return row == rows.end() ? colours.text : colours.*(row->colour);
}

QColor CodeLexer::paper(int) const
{
    return ColoursOf(look.dark).paper;
}

QFont CodeLexer::font(int) const
{
    return look.font;
}

bool CodeLexer::eolFill(int) const
{
    return false;
}

} // namespace wren
