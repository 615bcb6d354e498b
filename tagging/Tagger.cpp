#include "tagging/Tagger.h"

#include <utility>

namespace tagging {

Tagger::Tagger(const Settings& settings, Observer& observer, const base::CancelToken& cancel, ThreadStarter start)
    : pool(
          settings, observer, cancel, TaggingRun::EarlyFailures::EndTheWork,
          [this, &settings] {
              auto collector = std::make_unique<TagCollector>(settings, fields);
              collectors.push_back(collector.get());
              return collector;
          },
          std::move(start))
{
}

void Tagger::Add(const std::string& path, std::string field)
{
    fields.push_back(std::move(field));
    pool.Add(path);
}

void Tagger::Finish()
{
    pool.Finish();
    total = pool.Counts();
    tagged.resize(fields.size());
    for (const TagCollector* collector : collectors)
        AddUp(*collector);
    if (total.files == 0 && total.FailedFiles() > 0)
        pool.Fail("none of the sources could be tagged");
}

void Tagger::AddUp(const TagCollector& collector)
{
    for (const unsigned file : collector.Files())
        tagged[file] = true;
    total.tags += collector.Size();
    for (const auto& [file, tags] : collector.TooLong()) {
        total.tooLong += tags;
        tooLong[file] = tags; // no two workers share a file
    }
}

std::vector<std::unique_ptr<tagsfile::LineSource>> Tagger::Lines()
{
    std::vector<std::unique_ptr<tagsfile::LineSource>> lines;
    for (TagCollector* collector : collectors)
        lines.push_back(collector->Lines());
    return lines;
}

} // namespace tagging
