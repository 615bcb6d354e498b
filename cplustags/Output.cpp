#include "cplustags/Output.h"

#include "cplustags/Failure.h"
#include "cplustags/SparseFile.h"
#include "cplustags/StandardOutput.h"
#include "tagsfile/TagsFileKind.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace cplustags {

Output::Output(const Options& options, const Place& place, const base::CancelToken& cancel)
    : options(options), place(place), cancel(cancel)
{
}

bool Output::HasOldTags() const
{
    return options.append && IsFile() && tagsfile::WhatIs(place.target) == tagsfile::Target::Tags;
}

void Output::Check() const
{
    if (!IsFile())
        return;
    const std::string& target = place.target;
    if (const std::string refusal = tagsfile::RefusalOfLink(target); !options.followLinks && !refusal.empty())
        throw Failure(refusal);
    struct stat status;
    if (options.append && ::stat(target.c_str(), &status) == 0 && IsMostlyHoles(status))
        throw Failure(base::Shown(target) + " is far longer than its contents and is left unchanged; remove it");
    switch (tagsfile::WhatIs(target)) {
    case tagsfile::Target::Absent:
    case tagsfile::Target::Tags:
        return;
    case tagsfile::Target::Foreign:
        throw Failure(base::Shown(target) +
                      " is not a tags file and is left unchanged; name another file with -f, or remove it");
    case tagsfile::Target::Unreadable:
        throw SystemFailure("cannot read " + base::Shown(target) + ", the file to replace");
    }
}

void Output::MakeNewFile()
{
    newFile = std::make_unique<tagsfile::NewFile>(place.target, options.followLinks ? tagsfile::AtLink::Follow
                                                                                    : tagsfile::AtLink::Refuse);
    if (!newFile->Error().empty())
        throw Failure(newFile->Error());
}

// Returns the new file's working directory, or another one when writing to standard output.
const std::string& Output::Begin()
{
    if (IsFile()) {
        MakeNewFile();
        return newFile->Directory();
    }
    const char* given = std::getenv("TMPDIR");
    const std::string parent =
        base::AbsolutePath(given != nullptr && *given != '\0' ? given : "/tmp", place.currentDirectory);
    forTemporaries = std::make_unique<base::WorkingDirectory>(parent, "cplustags-" + std::to_string(::geteuid()));
    if (!forTemporaries->Error().empty())
        throw Failure(forTemporaries->Error());
    return forTemporaries->Path();
}

void Output::Write(const tagsfile::TagsCount& count, tagsfile::LineSources lines)
{
    if (IsFile())
        WriteFile(count, std::move(lines));
    else
        WriteStandardOutput(count, std::move(lines));
}

void Output::WriteFile(const tagsfile::TagsCount& count, tagsfile::LineSources lines)
{
    if (newFile == nullptr)
        MakeNewFile();
    const tagsfile::RewritableFile file = {
        [this](std::string_view text) { return !cancel.IsCancelled() && newFile->Write(text); },
        [this](off_t place, std::string_view text) { return newFile->WriteOver(place, text); },
        [this](const timespec& modified) { newFile->SetTime(modified); },
    };
    const bool isWritten = tagsfile::WriteTags(count, CPLUSTAGS_VERSION, std::move(lines), file) &&
                           !cancel.IsCancelled() && newFile->Commit();
    if (!newFile->Error().empty())
        throw Failure(newFile->Error());
    if (!isWritten)
        throw Failure(base::Shown(place.target) + " changed while it was being read");
}

void Output::WriteStandardOutput(const tagsfile::TagsCount& count, tagsfile::LineSources lines) const
{
    StandardOutput output;
    const auto write = [&](std::string_view text) { return !cancel.IsCancelled() && output.Write(text); };
    if (!tagsfile::WriteTags(count, CPLUSTAGS_VERSION, std::move(lines), write) || !output.Flush())
        throw SystemFailure("cannot write to standard output");
}

} // namespace cplustags
