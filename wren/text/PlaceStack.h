// The places that lookups left, and the way back to them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct VisitedPlace {
    long document = 0; // 0 once the document is closed; then the path counts
    std::string path;
    long offset = 0; // bytes

    bool operator==(const VisitedPlace&) const = default;
};

// Like a browser's history: going somewhere new forgets the places ahead. Keeps the last kMost. Document thread.
class PlaceStack {
public:
    static constexpr size_t kMost = 100;

    void Left(const VisitedPlace& place); // a lookup jumped away from it; repeats in a row count once

    bool CanGoBack() const { return !behind.empty(); }
    bool CanGoForward() const { return !ahead.empty(); }
    std::optional<VisitedPlace> Back(const VisitedPlace& here); // where to go; 'here' becomes the first place ahead
    std::optional<VisitedPlace> Forward(const VisitedPlace& here);

    // Adjusts places to an edit: 'inserted' bytes replaced 'removed' ones at 'offset'. A place within the removed text
    // keeps its offset, up to the end of the inserted text, so that reloading a file keeps its places.
    void TextChanged(long document, long offset, long removed, long inserted);
    void DocumentClosed(long document); // keeps its places by path, drops those without one
    void DocumentNamed(long document,
                       const std::string& path); // opened, which restores its places, or saved under a name

private:
    std::vector<VisitedPlace> behind;
    std::vector<VisitedPlace> ahead;
};

} // namespace wren
