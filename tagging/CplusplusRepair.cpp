#include "tagging/CplusplusRepair.h"

#include "tagging/tokens/Conditions.h"
#include "tagging/tokens/Keywords.h"
#include "tagging/tokens/RestOfSource.h"
#include "tagging/tokens/SourceTokens.h"

#include <algorithm>
#include <initializer_list>

namespace tagging {

namespace {

constexpr size_t kLongestLookAhead = 256; // tokens; real declarations are shorter
constexpr size_t kDeepestBraces = 1000;

using Tokens = std::vector<Token>;

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words)
{
    return token.kind == Token::kWord && std::find(words.begin(), words.end(), token.text) != words.end();
}

bool LooksLikeMacro(const Token& token)
{
    return token.kind == Token::kWord && token.text.size() > 2 &&
           std::none_of(token.text.begin(), token.text.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

class Repairer {
public:
    explicit Repairer(std::string_view text) : source(text), rest(text) {}

    std::optional<RepairedText> Repair()
    {
        Token token;
        for (; source.Next(token); last = token)
            OnToken(token);
        if (!isRepaired)
            return std::nullopt;
        return RepairedText{std::move(rest.Text()), std::move(templates)};
    }

private:
    // Of the code around a place. Branches of conditions begin with the same.
    struct State {
        std::vector<bool> declares; // for each open brace: whether declarations of classes or namespaces are in it
        unsigned parentheses = 0;
        bool opensScope = false; // the statement has a word like "class" or "namespace"
        bool isAlias = false;    // it begins with "using", "typedef" or "concept"

        bool Declares() const { return declares.empty() || declares.back(); }
        void EndStatement()
        {
            parentheses = 0;
            opensScope = false;
            isAlias = false;
        }
    };

    void OnToken(const Token& token)
    {
        if (token.kind == Token::kDirective)
            conditions.Follow(Directive(token.text), state, false);
        else if (conditions.Skipping() == Conditions<State>::Skip::No)
            OnCode(token);
    }

    void OnCode(const Token& token)
    {
        if (token.kind == Token::kWord)
            OnWord(token);
        else if (token.Is('{'))
            OpenBrace();
        else if (token.Is('}'))
            CloseBrace();
        else if (token.Is(';'))
            state.EndStatement();
        else if (token.Is('('))
            ++state.parentheses;
        else if (token.Is(')') && state.parentheses > 0)
            --state.parentheses;
        else if (token.Is('~') && MayBeginDestructor())
            OnTilde();
        else if (token.Is('=') && state.Declares() && state.parentheses == 0 && !state.isAlias)
            OnInitializer(token);
    }

    void OnWord(const Token& word)
    {
        if (word.text == "template")
            OnTemplate(word);
        else if (word.text == "enum")
            OnEnum();
        else if (IsAnyOf(word, {"class", "struct", "union", "namespace", "extern"}))
            state.opensScope = true;
        else if (IsAnyOf(word, {"using", "typedef", "concept"}))
            state.isAlias = true;
    }

    void OpenBrace()
    {
        if (state.declares.size() < kDeepestBraces)
            state.declares.push_back(state.Declares() && state.opensScope);
        state.EndStatement();
    }

    void CloseBrace()
    {
        if (!state.declares.empty())
            state.declares.pop_back();
        state.EndStatement();
    }

    void TakeOut(const Tokens& tokens)
    {
        for (const Token& token : tokens)
            rest.TakeOut(token);
        isRepaired = true;
    }

    // Adds tokens up to the mark that closes the group; the opening one has been read. False when that is far away.
    static bool ReadGroup(SourceTokens& from, char open, char close, Tokens& tokens)
    {
        int depth = 1;
        int parentheses = 0;
        Token token;
        while (tokens.size() < kLongestLookAhead && from.Next(token) && token.kind != Token::kDirective) {
            tokens.push_back(token);
            if (open != '(')
                parentheses += token.Is('(') ? 1 : token.Is(')') ? -1 : 0;
            if (parentheses == 0)
                depth += token.Is(open) ? 1 : token.Is(close) ? -1 : 0;
            if (depth == 0)
                return true;
        }
        return false;
    }

    // Not in an expression.
    bool MayBeginDestructor() const
    {
        return state.Declares() && state.parentheses == 0 &&
               (last.kind != Token::kMark || last.Is(';') || last.Is('{') || last.Is('}') || last.Is(':') ||
                last.Is(')'));
    }

    // "~A() override;": what stands between the parentheses and the end, but for "noexcept".
    void OnTilde()
    {
        SourceTokens ahead = source;
        Token name;
        Token open;
        Token close;
        if (!ahead.Next(name) || name.kind != Token::kWord || !ahead.Next(open) || !open.Is('(') ||
            !ahead.Next(close) || !close.Is(')'))
            return;
        Tokens tokens;
        bool isStrange = false;
        for (Token token; tokens.size() < kLongestLookAhead && ahead.Next(token); tokens.push_back(token)) {
            if (token.kind == Token::kDirective)
                return;
            if (token.Is(';') || token.Is('{') || token.Is('=') || token.Is(':'))
                break;
            isStrange |= token.kind == Token::kWord && token.text != "noexcept";
        }
        if (isStrange)
            TakeOut(tokens);
    }

    // "= Type{1, 2}".
    void OnInitializer(const Token& sign)
    {
        SourceTokens ahead = source;
        Tokens tokens = {sign};
        Token token;
        bool hasWord = false;
        while (tokens.size() < kLongestLookAhead && ahead.Next(token)) {
            tokens.push_back(token);
            if (token.Is('<') && hasWord) {
                if (!ReadGroup(ahead, '<', '>', tokens))
                    return;
            } else if (token.Is('{')) {
                if (hasWord && ReadGroup(ahead, '{', '}', tokens)) {
                    TakeOut(tokens);
                    source = ahead;
                }
                return;
            } else if (token.kind == Token::kWord &&
                       !IsAnyOf(token, {"struct", "class", "union", "enum", "new", "requires"})) {
                hasWord = true;
            } else if (!token.Is(':')) {
                return;
            }
        }
    }

    // "template <class T, class U>" before "T".
    void OnTemplate(const Token& word)
    {
        SourceTokens ahead = source;
        Token open;
        if (!ahead.Next(open) || !open.Is('<'))
            return;
        Tokens parameters = {open};
        if (!ReadGroup(ahead, '<', '>', parameters))
            return;
        source = ahead;
        Token next;
        if (!ahead.Next(next) || next.kind != Token::kWord || KindOfKeyword(next.text) != Keyword::No ||
            !IsParameterButTheLast(next, parameters))
            return;
        templates.push_back({word.line, Joined(parameters)});
        TakeOut(parameters);
        rest.TakeOut(word);
    }

    static bool IsParameterButTheLast(const Token& word, const Tokens& parameters)
    {
        const auto comma =
            std::find_if(parameters.rbegin(), parameters.rend(), [](const Token& t) { return t.Is(','); });
        return std::any_of(comma, parameters.rend(),
                           [&](const Token& token) { return token.kind == Token::kWord && token.text == word.text; });
    }

    static std::string Joined(const Tokens& tokens)
    {
        std::string text;
        bool followsWord = false;
        for (const Token& token : tokens) {
            const bool isWord = token.kind == Token::kWord || token.kind == Token::kNumber;
            if (isWord && followsWord)
                text += ' ';
            text += token.text;
            followsWord = isWord;
        }
        return text;
    }

    // "enum class Name MACRO(int) {".
    void OnEnum()
    {
        SourceTokens ahead = source;
        Token token;
        Token last;
        while (ahead.Next(token) && token.kind == Token::kWord)
            last = token;
        Tokens tokens = {last, token};
        Token next;
        if (LooksLikeMacro(last) && token.Is('(') && ReadGroup(ahead, '(', ')', tokens) && ahead.Next(next) &&
            next.Is('{'))
            TakeOut(tokens);
    }

    SourceTokens source;
    Token last; // before the current one
    RestOfSource rest;
    State state;
    Conditions<State> conditions;
    std::vector<RepairedText::Template> templates;
    bool isRepaired = false;
};

} // namespace

std::optional<RepairedText> RepairCplusplus(std::string_view text)
{
    return Repairer(text).Repair();
}

} // namespace tagging
