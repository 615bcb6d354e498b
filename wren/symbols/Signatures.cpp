#include "wren/symbols/Signatures.h"

#include "base/Identifier.h"

namespace wren {

namespace {

std::string_view Stripped(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? text.substr(text.size())
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

std::vector<std::string_view> ParametersOf(std::string_view signature)
{
    std::vector<std::string_view> parameters;
    const char last = signature.starts_with('<') ? '>' : ')';
    int depth = 0;
    size_t start = 1;
    for (size_t at = 0; at < signature.size(); ++at) {
        const char letter = signature[at];
        const bool isEnd = depth == 1 && letter == last;
        if (isEnd || (depth == 1 && letter == ',')) {
            parameters.push_back(Stripped(signature.substr(start, at - start)));
            start = at + 1;
        }
        if (isEnd)
            break;
        depth += letter == '(' || letter == '<' || letter == '[' || letter == '{';
        depth -= letter == ')' || letter == ']' || letter == '}' || (letter == '>' && depth > 1);
    }
    if (parameters.size() == 1 && (parameters[0].empty() || parameters[0] == "void"))
        parameters.clear();
    return parameters;
}

std::string WithBlanksBehindCommas(std::string_view signature)
{
    std::string written;
    char quote = 0;
    for (size_t at = 0; at < signature.size(); ++at) {
        const char letter = signature[at];
        written += letter;
        if (quote != 0 && letter == '\\' && at + 1 < signature.size())
            written += signature[++at];
        else if (quote != 0)
            quote = letter == quote ? '\0' : quote;
        else if (letter == '"' || (letter == '\'' && !(at > 0 && base::IsDigit(signature[at - 1])))) // not 1'000
            quote = letter;
        else if (letter == ',' && at + 1 < signature.size() && signature[at + 1] != ' ')
            written += ' ';
    }
    return written;
}

bool IsVariadic(std::string_view parameter)
{
    return parameter.find("...") != std::string_view::npos;
}

std::string TypeOfParameter(std::string_view parameter)
{
    parameter = Stripped(parameter.substr(0, parameter.find('=')));
    size_t end = parameter.size();
    while (end > 0 && base::IsIdentifierCharacter(parameter[end - 1]))
        --end;
    const std::string_view rest = Stripped(parameter.substr(0, end));
    const bool isName = !rest.empty() && end < parameter.size() && rest != "const" && rest != "struct" &&
                        rest != "unsigned" && !rest.ends_with(':');
    std::string type;
    for (const char letter : isName ? rest : parameter)
        if (letter != ' ')
            type += letter;
    return type;
}

} // namespace wren
