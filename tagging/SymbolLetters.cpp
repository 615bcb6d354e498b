#include "tagging/SymbolLetters.h"

#include "tagsfile/Kinds.h"

#include <span>

namespace tagging {

namespace {

struct Letter {
    char letter;
    SymbolKind kind;
};

constexpr Letter kLetters[] = {
    {'d', SymbolKind::Macro},
    {'e', SymbolKind::Enumerator},
    {'f', SymbolKind::Function},
    {'g', SymbolKind::Enum},
    {'m', SymbolKind::Member},
    {'p', SymbolKind::Prototype},
    {'s', SymbolKind::Struct},
    {'t', SymbolKind::Typedef},
    {'u', SymbolKind::Union},
    {'v', SymbolKind::Variable},
    {'x', SymbolKind::ExternVariable},
    {'c', SymbolKind::Class},
    {'n', SymbolKind::Namespace},
    {'A', SymbolKind::NamespaceAlias},
    {'N', SymbolKind::UsingName},
    {'U', SymbolKind::UsingNamespace},
    {'Z', SymbolKind::TemplateParameter},
    {'l', SymbolKind::Local},
    {'z', SymbolKind::Parameter},
    {'D', SymbolKind::MacroParameter},
    {'L', SymbolKind::Label},
    {'s', SymbolKind::Slot},
    {'S', SymbolKind::Signal},
    {'p', SymbolKind::QtProperty},
};

constexpr Letter kLettersOfObjectiveC[] = {
    {tagsfile::kind::kInterface, SymbolKind::Interface},
    {tagsfile::kind::kImplementation, SymbolKind::Implementation},
    {tagsfile::kind::kProtocol, SymbolKind::Protocol},
    {tagsfile::kind::kCategory, SymbolKind::Category},
    {tagsfile::kind::kInstanceMethod, SymbolKind::InstanceMethod},
    {tagsfile::kind::kClassMethod, SymbolKind::ClassMethod},
    {tagsfile::kind::kInstanceMethodDeclaration, SymbolKind::InstanceMethodDeclaration},
    {tagsfile::kind::kClassMethodDeclaration, SymbolKind::ClassMethodDeclaration},
    {tagsfile::kind::kProperty, SymbolKind::Property},
    {tagsfile::kind::kInstanceVariable, SymbolKind::InstanceVariable},
};

} // namespace

SymbolKind KindOfObjectiveCLetter(char letter)
{
    for (const Letter& each : kLettersOfObjectiveC)
        if (each.letter == letter)
            return each.kind;
    return SymbolKind::None;
}

char LetterOf(SymbolKind kind)
{
    for (const auto& letters : {std::span<const Letter>(kLetters), std::span<const Letter>(kLettersOfObjectiveC)})
        for (const Letter& each : letters)
            if (each.kind == kind)
                return each.letter;
    return '\0';
}

} // namespace tagging
