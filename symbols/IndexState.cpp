#include "symbols/IndexState.h"

#include "symbols/store/IndexFile.h"
#include "symbols/update/CacheLocation.h"

#include <utility>

namespace symbols {

namespace {

// A full disk is noticed late, after much work.
constexpr std::chrono::minutes kUntilNextTry{1};

bool IsFor(const StoreHeader& header, const StoreHeader& wanted)
{
    return header.root == wanted.root && header.patterns == wanted.patterns;
}

} // namespace

IndexState::IndexState(const std::string& directory)
    : directory(directory), store(directory.empty() ? nullptr : std::make_unique<Store>(directory))
{
}

SnapshotPointer IndexState::Current() const
{
    {
        const std::lock_guard lock(mutex);
        if (memory != nullptr)
            return memory;
    }
    return store != nullptr ? store->Current() : nullptr;
}

bool IndexState::IsInMemory() const
{
    const std::lock_guard lock(mutex);
    return memory != nullptr;
}

SnapshotPointer IndexState::Usable(const StoreHeader& header) const
{
    {
        const std::lock_guard lock(mutex);
        if (memory != nullptr)
            return IsFor(memorysHeader, header) ? memory : nullptr;
    }
    return UsableOnDisk(header);
}

SnapshotPointer IndexState::UsableOnDisk(const StoreHeader& header) const
{
    const std::optional<StoreHeader> found = store != nullptr ? store->Header() : std::nullopt;
    if (!found || !IsFor(*found, header))
        return nullptr;
    const SnapshotPointer current = store->Current();
    return current != nullptr && !current->IsDamaged() ? current : nullptr;
}

base::Result<void> IndexState::CanUseDisk() const
{
    if (store == nullptr)
        return base::Error{"there is no cache directory"};
    {
        const std::lock_guard lock(mutex);
        if (memory != nullptr && Clock::now() < nextTry)
            return base::Error{lastProblem};
    }
    return MakePrivateDirectory(directory);
}

// Another process may be writing: what is usable is known only once the writer is ours.
base::Result<std::unique_ptr<Store::Writer>> IndexState::DiskWriter(const StoreHeader& header, SnapshotPointer& before,
                                                                    bool& isFirst, const base::CancelToken& cancel)
{
    for (isFirst = UsableOnDisk(header) == nullptr;; isFirst = true) {
        base::Result<std::unique_ptr<Store::Writer>> writer = store->Write(header, isFirst, cancel);
        if (!writer)
            return writer;
        before = isFirst ? store->Part(header) : UsableOnDisk(header);
        if (isFirst || before != nullptr)
            return writer;
    }
}

// Continues the disk's state, even if the one in memory is newer.
IndexState::Outcome IndexState::WriteOnDisk(const StoreHeader& header, const Work& work, const KeepsPart& keepsPart,
                                            const base::CancelToken& cancel)
{
    if (const base::Result<void> usable = CanUseDisk(); !usable)
        return {false, usable.Failure().Message()};
    SnapshotPointer before;
    bool isFirst = false;
    const base::Result<std::unique_ptr<Store::Writer>> writer = DiskWriter(header, before, isFirst, cancel);
    if (!writer)
        return {false, writer.Failure().Message()};
    base::Result<bool> result = work({**writer, before, isFirst});
    if (!result && isFirst && cancel.IsCancelled() && keepsPart && keepsPart())
        (void)(*writer)->CommitPart(); // when it fails, the next one starts from nothing
    if (!result)
        return {std::move(result), ""};
    if (const base::Result<void> written = *result ? (*writer)->Commit() : base::Result<void>(); !written)
        return {false, written.Failure().Message()};
    const std::lock_guard lock(mutex);
    memory = nullptr; // the disk has all of it
    return {std::move(result), ""};
}

base::Result<bool> IndexState::WriteMemory(const StoreHeader& header, const Work& work)
{
    const SnapshotPointer before = Usable(header);
    SnapshotPointer after;
    const std::unique_ptr<Store::Writer> writer =
        WriteInMemory(before, [&](SnapshotPointer committed) { after = std::move(committed); });
    base::Result<bool> result = work({*writer, before, before == nullptr});
    if (!result || !*result)
        return result;
    if (const base::Result<void> written = writer->Commit(); !written)
        return written.Failure();
    const std::lock_guard lock(mutex);
    memory = after;
    memorysHeader = header;
    return true;
}

base::Result<std::string> IndexState::Write(const StoreHeader& header, const Work& work, const KeepsPart& keepsPart,
                                            const base::CancelToken& cancel)
{
    const Outcome onDisk = WriteOnDisk(header, work, keepsPart, cancel);
    if (onDisk.problem.empty())
        return onDisk.result ? base::Result<std::string>(std::string()) : onDisk.result.Failure();
    if (cancel.IsCancelled())
        return base::Error{"cancelled"};
    {
        const std::lock_guard lock(mutex);
        lastProblem = onDisk.problem;
        nextTry = Clock::now() + kUntilNextTry;
    }
    if (const base::Result<bool> inMemory = WriteMemory(header, work); !inMemory)
        return inMemory.Failure();
    return "the index is kept in memory: " + onDisk.problem;
}

base::Result<void> IndexState::Import(const std::string& file, const StoreHeader& header,
                                      const base::CancelToken& cancel)
{
    if (store == nullptr)
        return base::Error{"there is no cache directory"};
    if (base::Result<void> made = MakePrivateDirectory(directory); !made)
        return made;
    if (base::Result<void> imported = ImportIndex(directory, file, header, cancel); !imported)
        return imported;
    const std::lock_guard lock(mutex);
    memory = nullptr;
    return {};
}

std::optional<WritingProcess> IndexState::Writing() const
{
    return store != nullptr ? store->Writing() : std::nullopt;
}

base::Result<void> IndexState::Remove()
{
    {
        const std::lock_guard lock(mutex);
        memory = nullptr;
    }
    return store != nullptr ? store->Remove() : base::Result<void>();
}

} // namespace symbols
