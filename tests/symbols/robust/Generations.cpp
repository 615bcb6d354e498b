#include "tests/symbols/robust/Generations.h"

#include <thread>

using symbols::Snapshot;

tagging::ParsedSource SourceOf(const std::string& name, unsigned generation)
{
    tagging::ParsedSource source;
    source.contentHash = generation;
    tagging::Symbol symbol;
    symbol.name = source.texts.Put(name + "_of");
    symbol.scope = source.texts.Put("generation" + std::to_string(generation));
    symbol.line = generation;
    symbol.kind = tagging::SymbolKind::Function;
    symbol.scopeKind = tagging::SymbolKind::Namespace;
    for (unsigned copy = 0; copy < 1 + generation % 7; ++copy)
        source.symbols.push_back(symbol);
    source.names.push_back(symbol.name);
    source.includes.push_back({.name = symbol.scope, .line = 1, .isAngled = false});
    return source;
}

std::string WriteGenerations(symbols::Store& store, const std::string& name, unsigned last)
{
    const base::CancelToken never;
    for (unsigned generation = 1; generation <= last; ++generation) {
        auto writer = store.Write({.root = "/tree", .patterns = "one"}, false, never);
        if (!writer)
            return writer.Failure().Message();
        for (const char* suffix : {"/first", "/second"})
            (*writer)->Put(name + suffix, {.size = generation, .modified = generation, .inode = 1},
                           SourceOf(name, generation));
        if (const auto done = (*writer)->Commit(); !done)
            return done.Failure().Message();
    }
    return "";
}

unsigned GenerationIn(const Snapshot& snapshot, const std::string& name, std::string& error)
{
    const auto first = snapshot.FindFile(name + "/first");
    const auto second = snapshot.FindFile(name + "/second");
    if (!first && !second)
        return 0;
    if (!first || !second || snapshot.IsDamaged()) {
        error = "half of a pair, or a damaged file";
        return 0;
    }
    const auto generation = static_cast<unsigned>(snapshot.FileOf(*first).stamp.size);
    const symbols::Symbols all = snapshot.ByName(name + "_of", {});
    if (snapshot.FileOf(*second).contentHash != generation)
        error = "two generations at once";
    else if (all.found.size() != 2 * (1 + generation % 7))
        error = "symbols of another generation";
    for (const symbols::Symbol& symbol : all.found)
        if (symbol.line != generation || symbol.scope != "generation" + std::to_string(generation))
            error = "a symbol of another generation";
    return generation;
}

std::string ReadGenerations(const symbols::Store& store, const std::string& one, const std::string& other,
                            unsigned last)
{
    unsigned seen[2] = {0, 0};
    const std::string names[2] = {one, other};
    std::string error;
    while (error.empty() && (seen[0] < last || seen[1] < last)) {
        const symbols::SnapshotPointer snapshot = store.Current();
        for (int pair = 0; snapshot != nullptr && error.empty() && pair < 2; ++pair) {
            const unsigned generation = GenerationIn(*snapshot, names[pair], error);
            if (generation < seen[pair])
                error = "an older generation after a newer one";
            seen[pair] = generation;
        }
        std::this_thread::yield();
    }
    return error;
}

std::string ShareStoreBetweenThreads(const std::string& place, int readers, unsigned last)
{
    symbols::Store shared(place);
    std::vector<std::string> errors(2 + static_cast<size_t>(readers));
    {
        std::vector<std::jthread> threads;
        for (const size_t writer : {0U, 1U})
            threads.emplace_back([&, writer] {
                symbols::Store own(place);
                errors[writer] = WriteGenerations(writer == 0 ? shared : own, writer == 0 ? "one" : "other", last);
            });
        for (size_t reader = 2; reader < errors.size(); ++reader)
            threads.emplace_back([&, reader] {
                const symbols::Store own(place);
                errors[reader] = ReadGenerations(reader % 2 == 0 ? shared : own, "one", "other", last);
            });
    }
    std::string all;
    for (const std::string& error : errors)
        all += error;
    return all;
}
