#include "symbols/store/Writer.h"

namespace symbols {

namespace {

class MemoryDestination : public Destination {
public:
    explicit MemoryDestination(std::function<void(SnapshotPointer)> committed) : committed(std::move(committed)) {}

    base::Result<std::shared_ptr<const Segment>> WriteSegment(SegmentBuilder& builder,
                                                              SegmentBuilder::Written* written) override
    {
        SegmentSink sink(-1);
        base::Result<SegmentBuilder::Written> result = builder.Write(sink);
        if (!result)
            return result.Failure();
        *written = std::move(*result);
        return Segment::InMemory(sink.Content());
    }

    base::Result<void> Publish(const State& state) override
    {
        committed(View::Of(state));
        return {};
    }

    base::Result<void> PublishPart(const State&) override { return {}; }

private:
    std::function<void(SnapshotPointer)> committed;
};

} // namespace

std::unique_ptr<Store::Writer> WriteInMemory(const SnapshotPointer& before,
                                             std::function<void(SnapshotPointer)> committed, StoreLimits limits)
{
    const auto* const view = dynamic_cast<const View*>(before.get());
    return std::make_unique<IndexWriter>(std::make_unique<MemoryDestination>(std::move(committed)),
                                         view == nullptr ? State() : view->StateOfIndex(), view == nullptr, limits);
}

} // namespace symbols
