#include "wren/search/TextPattern.h"

#include "base/Identifier.h"
#include "base/Utf8.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>

namespace wren {

namespace {

struct Free {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_jit_stack* stack) const { pcre2_jit_stack_free(stack); }
};

std::string Quoted(std::string_view text)
{
    std::string quoted;
    for (const char c : text) {
        const bool isPlain = base::IsIdentifierCharacter(c) || static_cast<unsigned char>(c) >= 0x80;
        quoted += isPlain ? "" : "\\";
        quoted += c;
    }
    return quoted;
}

std::uint32_t OptionsOf(const TextQuery& query)
{
    std::uint32_t options = PCRE2_MULTILINE | PCRE2_NEVER_BACKSLASH_C;
    if (!query.matchesCase)
        options |= PCRE2_CASELESS;
    // Letters of several bytes are letters then; texts may be damaged. "\w" stays what names in sources consist of:
    // with all letters of the world, an expression that begins with it takes three times as long.
    if (query.isExpression || !base::IsAscii(query.text))
        options |= PCRE2_UTF | PCRE2_MATCH_INVALID_UTF;
    return options;
}

base::Error ErrorOf(int number, size_t offset, const TextQuery& query)
{
    PCRE2_UCHAR text[256];
    pcre2_get_error_message(number, text, sizeof text);
    return {"the expression is wrong at character " + std::to_string(std::min(offset, query.text.size()) + 1) + ": " +
            reinterpret_cast<const char*>(text)};
}

} // namespace

struct TextPattern::Code {
    std::unique_ptr<pcre2_code, Free> compiled;
};

base::Result<TextPattern> TextPattern::Compile(const TextQuery& query)
{
    std::string text = query.isExpression ? query.text : Quoted(query.text);
    if (query.wholeWords)
        text = "(?<!\\w)(?:" + text + ")(?!\\w)";
    int number = 0;
    PCRE2_SIZE offset = 0;
    auto code = std::make_shared<Code>();
    code->compiled.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), OptionsOf(query),
                                       &number, &offset, nullptr));
    if (code->compiled == nullptr)
        return ErrorOf(number, offset, query);
    pcre2_jit_compile(code->compiled.get(), PCRE2_JIT_COMPLETE); // without it, the same takes longer
    return TextPattern(std::move(code));
}

struct TextPattern::Finder::Contents {
    std::shared_ptr<const Code> code;
    std::unique_ptr<pcre2_match_data, Free> data;
    std::unique_ptr<pcre2_match_context, Free> context;
    std::unique_ptr<pcre2_jit_stack, Free> stack;
};

TextPattern::Finder::Finder(const TextPattern& pattern) : contents(std::make_shared<Contents>())
{
    constexpr std::uint32_t kMostSteps = 1'000'000; // for one match
    constexpr size_t kFirstStack = 32 * 1024;
    constexpr size_t kMostStack = 1024 * 1024;
    contents->code = pattern.code;
    contents->data.reset(pcre2_match_data_create_from_pattern(pattern.code->compiled.get(), nullptr));
    contents->context.reset(pcre2_match_context_create(nullptr));
    contents->stack.reset(pcre2_jit_stack_create(kFirstStack, kMostStack, nullptr));
    pcre2_set_match_limit(contents->context.get(), kMostSteps);
    pcre2_jit_stack_assign(contents->context.get(), nullptr, contents->stack.get());
}

std::optional<TextMatch> TextPattern::Finder::Next(std::string_view text, size_t from)
{
    const auto* const subject = reinterpret_cast<PCRE2_SPTR>(text.data());
    const int found = pcre2_match(contents->code->compiled.get(), subject, text.size(), from, PCRE2_NOTEMPTY,
                                  contents->data.get(), contents->context.get());
    hasGivenUp = hasGivenUp || (found < 0 && found != PCRE2_ERROR_NOMATCH);
    if (found < 0)
        return std::nullopt;
    const PCRE2_SIZE* const bounds = pcre2_get_ovector_pointer(contents->data.get());
    // "\K" can put the beginning behind the end.
    return bounds[1] > bounds[0] ? std::optional(TextMatch{bounds[0], bounds[1] - bounds[0]}) : std::nullopt;
}

// A group that took no part in the match is empty.
std::string_view TextPattern::Finder::GroupAt(size_t number, std::string_view text) const
{
    const PCRE2_SIZE* const bounds = pcre2_get_ovector_pointer(contents->data.get());
    if (number >= pcre2_get_ovector_count(contents->data.get()))
        return {};
    const size_t start = bounds[2 * number];
    const size_t end = bounds[2 * number + 1];
    return start <= end && end <= text.size() ? text.substr(start, end - start) : std::string_view();
}

std::string TextPattern::Finder::Expanded(std::string_view with, std::string_view text, std::string_view lineEnd) const
{
    std::string result;
    for (size_t at = 0; at < with.size(); ++at) {
        const char mark = with[at];
        if ((mark != '$' && mark != '\\') || at + 1 == with.size()) {
            result += mark;
            continue;
        }
        const char c = with[++at];
        if (base::IsDigit(c))
            result += GroupAt(static_cast<size_t>(c - '0'), text);
        else if (mark == '\\' && c == 'n')
            result += lineEnd;
        else if (mark == '\\' && c == 't')
            result += '\t';
        else if (c == mark)
            result += c;
        else
            (result += mark) += c;
    }
    return result;
}

std::string_view LineEndOf(std::string_view text)
{
    const size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos || text[end] == '\n')
        return "\n";
    return text.substr(end, 2) == "\r\n" ? "\r\n" : "\r";
}

} // namespace wren
