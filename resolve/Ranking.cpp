#include "resolve/Ranking.h"

#include "resolve/Kinds.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <type_traits>
#include <utility>

namespace resolve {

namespace {

struct Ranked {
    Meaning meaning;
    int misfit = 0;
    bool isLocalElsewhere = false;
    bool isOtherLanguage = false;
    bool hasOtherArguments = false;
    int passedMisfit = 0;
    bool isMacro = false;
    bool isSystem = false;
    Branch branch = Branch::Taken;
    int distance = 0;
    std::string entity;
};

// The types of the parameters by their last names, and const: "(const Shape& shape, int n) const".
std::string Shape(std::string_view signature)
{
    std::string shape = IsConstantMethod(signature) ? "const" : "";
    for (const Type& type : ParameterTypes(signature))
        if (type.name != "void" || type.pointers > 0)
            shape += ' ' + std::string(type.Leaf()) + std::string(static_cast<size_t>(type.pointers), '*');
    return shape;
}

// What all declarations of a thing have in common. A type or a macro is declared once.
std::string EntityOf(const Symbol& symbol, bool isLocalElsewhere, World& world, size_t number)
{
    std::string key;
    switch (symbol.kind) {
    case SymbolKind::Function:
    case SymbolKind::Prototype:
        key = "f ";
        break;
    case SymbolKind::Variable:
    case SymbolKind::ExternVariable:
        key = "v ";
        break;
    case SymbolKind::Member:
        // A static member's definition is a variable of the class's scope.
        key = symbol.isStatic ? "v " : "";
        break;
    case SymbolKind::Interface:
    case SymbolKind::Implementation:
    case SymbolKind::Category:
        key = "i ";
        break;
    case SymbolKind::InstanceMethod:
    case SymbolKind::InstanceMethodDeclaration:
        key = "- ";
        break;
    case SymbolKind::ClassMethod:
    case SymbolKind::ClassMethodDeclaration:
        key = "+ ";
        break;
    default:
        break;
    }
    if (key.empty() || isLocalElsewhere)
        return "#" + std::to_string(number);
    key += world.VisibleScope(symbol);
    if (key[0] == 'f' && world.Text().IsCplusplus())
        key += " " + Shape(symbol.signature);
    return key;
}

// Of alternatives the first. Otherwise the nearest before the place, then behind it; in other files the last macro, and
// the first of anything else.
long LineOrder(const Symbol& symbol, Branch branch, unsigned line, const World& world)
{
    const long own = symbol.line;
    if (branch == Branch::Unsure)
        return own;
    if (symbol.file != world.TextFile() || line == 0)
        return symbol.kind == SymbolKind::Macro ? -own : own;
    return own <= line ? static_cast<long>(line) - own : 1'000'000 + own;
}

struct EntityRank {
    int misfit = 1000;
    bool isFar = true;
    bool isLocalElsewhere = true;
    bool isOtherLanguage = true;
    int level = INT32_MAX;
    bool hasOtherArguments = true;
    int passedMisfit = INT32_MAX;
    bool isMacro = false; // the preprocessor comes first
    bool isSystem = true;
    Branch branch = Branch::Left;
    int distance = INT32_MAX;

    auto Key() const
    {
        const bool isReplaced = isMacro && !isFar;
        return std::tuple(misfit >= kUnfit, isOtherLanguage, level >= kUnreachable, isLocalElsewhere, isFar,
                          branch == Branch::Left, level, !isReplaced, hasOtherArguments, passedMisfit, misfit, isSystem,
                          branch, distance, !isMacro);
    }
};

int PassedMisfitOf(const Symbol& symbol, const Usage& use)
{
    if (!IsCallable(symbol.kind))
        return 0;
    int misfit = use.passed.empty() ? 0 : PassedMisfit(ParameterTypes(symbol.signature), use.passed);
    // A member that is not const does not fit a const object; otherwise it fits better.
    const bool isConstant = IsConstantMethod(symbol.signature);
    if (!symbol.scope.empty() && isConstant != use.isConstant)
        misfit += isConstant ? 1 : 3;
    return misfit;
}

// Without "struct", C means the typedef of that name.
int TagMisfit(const Symbol& symbol, const Usage& use, const World& world)
{
    const bool isTag =
        symbol.kind == SymbolKind::Struct || symbol.kind == SymbolKind::Union || symbol.kind == SymbolKind::Enum;
    return isTag && use.form != Usage::Form::Tag && !world.Text().IsCplusplus() ? 2 : 0;
}

using Entities = std::map<std::string, EntityRank>;

Entities RanksOf(const std::vector<Ranked>& all)
{
    Entities entities;
    for (const Ranked& each : all) {
        EntityRank& rank = entities[each.entity];
        rank.misfit = std::min(rank.misfit, each.misfit);
        rank.isFar &= each.distance >= Distances::kUnrelated;
        rank.isOtherLanguage &= each.isOtherLanguage;
        rank.isLocalElsewhere &= each.isLocalElsewhere;
        rank.level = std::min(rank.level, each.meaning.level);
        rank.hasOtherArguments &= each.hasOtherArguments;
        rank.passedMisfit = std::min(rank.passedMisfit, each.passedMisfit);
        rank.isMacro |= each.isMacro;
        rank.isSystem &= each.isSystem;
        rank.branch = std::min(rank.branch, each.branch);
        rank.distance = std::min(rank.distance, each.distance);
    }
    return entities;
}

// Files that do not count are not read for it.
Branch BranchOf(const Symbol& symbol, int distance, unsigned line, World& world)
{
    if (distance >= Distances::kUnrelated)
        return Branch::Taken;
    const Branch branch = world.BranchAt(symbol.file, symbol.line);
    const bool isBesideIt = branch == Branch::Left && symbol.file == world.TextFile() && line != 0 &&
                            world.BranchAt(symbol.file, line) == Branch::Left;
    return isBesideIt ? Branch::Taken : branch;
}

// "struct x" means only tags.
bool IsUnlikely(const EntityRank& rank, const Usage& use)
{
    const bool isNoTag = use.form == Usage::Form::Tag && rank.misfit > 0;
    return rank.misfit >= kUnfit || isNoTag || rank.isOtherLanguage || rank.level >= kUnreachable ||
           rank.isLocalElsewhere || rank.hasOtherArguments;
}

} // namespace

void RankMeanings(MeaningList& meanings, const Usage& use, unsigned line, World& world)
{
    std::vector<Ranked> all;
    for (size_t i = 0; i < meanings.size(); ++i) {
        Ranked ranked;
        const Symbol& symbol = meanings[i].symbol;
        ranked.misfit = Misfit(symbol, use) + TagMisfit(symbol, use, world);
        ranked.passedMisfit = PassedMisfitOf(symbol, use);
        ranked.isMacro = symbol.kind == SymbolKind::Macro &&
                         (symbol.signature.empty() || use.form == Usage::Form::Call || use.form == Usage::Form::Macro);
        ranked.isOtherLanguage = world.IsOtherLanguage(symbol);
        ranked.isSystem = symbol.file != world.TextFile() && world.Files().FileOf(symbol.file).isSystem;
        ranked.isLocalElsewhere = world.IsFileLocalElsewhere(symbol);
        ranked.hasOtherArguments =
            use.arguments && !symbol.signature.empty() && !CountsOf(symbol.signature).Fit(*use.arguments);
        ranked.distance = world.Distance(symbol.file);
        if (meanings.size() > 1)
            ranked.branch = BranchOf(symbol, ranked.distance, line, world);
        ranked.entity = EntityOf(symbol, ranked.isLocalElsewhere, world, i);
        ranked.meaning = std::move(meanings[i]);
        all.push_back(std::move(ranked));
    }
    const Entities entities = RanksOf(all);
    const auto keyOf = [&](const Ranked& each) {
        const Symbol& symbol = each.meaning.symbol;
        const bool isAlone = std::string_view(each.entity).starts_with('#');
        const long order = LineOrder(symbol, each.branch, line, world);
        return std::tuple(entities.at(each.entity).Key(), isAlone ? each.distance : 0,
                          isAlone ? each.branch : Branch::Taken, isAlone ? order : 0, std::string_view(each.entity),
                          each.branch == Branch::Left, each.distance, each.branch, order, world.PathOf(symbol.file),
                          symbol.line);
    };
    using Key = std::invoke_result_t<decltype(keyOf), const Ranked&>;
    std::vector<std::pair<Key, size_t>> sorted; // a common name has thousands of meanings
    sorted.reserve(all.size());
    for (size_t i = 0; i < all.size(); ++i)
        sorted.emplace_back(keyOf(all[i]), i);
    std::sort(sorted.begin(), sorted.end());
    size_t entity = 0;
    for (size_t i = 0; i < sorted.size(); ++i) {
        Ranked& each = all[sorted[i].second];
        if (i > 0 && each.entity != all[sorted[i - 1].second].entity)
            ++entity;
        meanings[i] = std::move(each.meaning);
        meanings[i].entity = entity;
        meanings[i].isUnlikely = IsUnlikely(entities.at(each.entity), use);
    }
}

} // namespace resolve
