#include "wren/core/PlaceStack.h"

#include <algorithm>

namespace wren {

namespace {

void Push(std::vector<Place>* places, const Place& place)
{
    if (!places->empty() && places->back() == place)
        return;
    if (places->size() == PlaceStack::kMost)
        places->erase(places->begin());
    places->push_back(place);
}

std::optional<Place> Step(std::vector<Place>* from, std::vector<Place>* to, const Place& here)
{
    if (from->empty())
        return std::nullopt;
    const Place next = from->back();
    from->pop_back();
    Push(to, here);
    return next;
}

long Moved(long place, long offset, long removed, long inserted)
{
    if (place <= offset)
        return place;
    if (place >= offset + removed)
        return place + inserted - removed;
    return std::min(place, offset + inserted);
}

} // namespace

void PlaceStack::Left(const Place& place)
{
    Push(&behind, place);
    ahead.clear();
}

std::optional<Place> PlaceStack::Back(const Place& here)
{
    return Step(&behind, &ahead, here);
}

std::optional<Place> PlaceStack::Forward(const Place& here)
{
    return Step(&ahead, &behind, here);
}

void PlaceStack::TextChanged(long document, long offset, long removed, long inserted)
{
    for (std::vector<Place>* places : {&behind, &ahead})
        for (Place& place : *places)
            if (place.document == document)
                place.offset = Moved(place.offset, offset, removed, inserted);
}

void PlaceStack::DocumentClosed(long document)
{
    for (std::vector<Place>* places : {&behind, &ahead}) {
        std::erase_if(*places, [&](const Place& each) { return each.document == document && each.path.empty(); });
        for (Place& place : *places)
            if (place.document == document)
                place.document = 0;
    }
}

void PlaceStack::DocumentNamed(long document, const std::string& path)
{
    for (std::vector<Place>* places : {&behind, &ahead}) {
        for (Place& place : *places) {
            if (place.document == document)
                place.path = path;
            else if (place.document == 0 && place.path == path)
                place.document = document;
        }
    }
}

} // namespace wren
