// The places that lookups left, and the way back to them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct VisitedPlace {
    long document = 0; // 0 when it has no identifier any more; then the path counts
    std::string path;
    long offset = 0; // bytes

    bool operator==(const VisitedPlace&) const = default;
};

// Like a browser's history: going somewhere new forgets the places ahead. Keeps the last kMost. Document thread.
class PlaceStack {
public:
    static constexpr size_t kMost = 100;

    void Left(const VisitedPlace& place); // a lookup leads away from it; the same place twice in a row counts once

    bool CanGoBack() const { return !behind.empty(); }
    bool CanGoForward() const { return !ahead.empty(); }
    std::optional<VisitedPlace> Back(const VisitedPlace& here); // where to go; 'here' is then the first place ahead
    std::optional<VisitedPlace> Forward(const VisitedPlace& here);

    // Keeps places where they are when text before them comes or goes: 'inserted' bytes took the place of 'removed'
    // ones. A place within the removed text is kept as far as the inserted text reaches, so that a file read again
    // keeps all.
    void TextChanged(long document, long offset, long removed, long inserted);
    void DocumentClosed(long document); // its places live on by path, or are forgotten when they have none
    void DocumentNamed(long document,
                       const std::string& path); // opened, which revives its places, or saved under a name

private:
    std::vector<VisitedPlace> behind;
    std::vector<VisitedPlace> ahead;
};

} // namespace wren
