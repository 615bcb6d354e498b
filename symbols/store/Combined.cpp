// Open texts, and one view of them and several indexes.

#include "symbols/store/Combination.h"
#include "symbols/store/SegmentBuilder.h"

namespace symbols {

OpenText::OpenText(std::string path, std::string text, const tagging::ParsedSource& parsed)
    : path(std::move(path)), text(std::move(text))
{
    SegmentBuilder builder;
    builder.Add(this->path, {this->text.size(), 0, 0}, parsed);
    SegmentSink sink(-1);
    [[maybe_unused]] const auto written = builder.Write(sink); // memory does not fail
    symbols = Segment::InMemory(sink.Content());
}

SnapshotPointer Combined(SnapshotPointer project, SnapshotPointer system, const std::string& systemRoot,
                         const std::vector<std::shared_ptr<const OpenText>>& open)
{
    Layers layers;
    layers.project = std::move(project);
    layers.system = std::move(system);
    layers.systemRoot = systemRoot;
    Combination combination(std::move(layers));
    for (const std::shared_ptr<const OpenText>& text : open)
        combination.Put(text);
    return combination.Current();
}

} // namespace symbols
