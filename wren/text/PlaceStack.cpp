#include "wren/text/PlaceStack.h"

#include "wren/text/TextChange.h"

namespace wren {

namespace {

void Push(std::vector<VisitedPlace>* places, const VisitedPlace& place)
{
    if (!places->empty() && places->back() == place)
        return;
    if (places->size() == PlaceStack::kMost)
        places->erase(places->begin());
    places->push_back(place);
}

std::optional<VisitedPlace> Step(std::vector<VisitedPlace>* from, std::vector<VisitedPlace>* to,
                                 const VisitedPlace& here)
{
    if (from->empty())
        return std::nullopt;
    const VisitedPlace next = from->back();
    from->pop_back();
    Push(to, here);
    return next;
}

} // namespace

void PlaceStack::Left(const VisitedPlace& place)
{
    Push(&behind, place);
    ahead.clear();
}

std::optional<VisitedPlace> PlaceStack::Back(const VisitedPlace& here)
{
    return Step(&behind, &ahead, here);
}

std::optional<VisitedPlace> PlaceStack::Forward(const VisitedPlace& here)
{
    return Step(&ahead, &behind, here);
}

void PlaceStack::TextChanged(long document, long offset, long removed, long inserted)
{
    for (std::vector<VisitedPlace>* places : {&behind, &ahead})
        for (VisitedPlace& place : *places)
            if (place.document == document)
                place.offset = MovedPlace(place.offset, {offset, removed, inserted});
}

void PlaceStack::DocumentClosed(long document)
{
    for (std::vector<VisitedPlace>* places : {&behind, &ahead}) {
        std::erase_if(*places,
                      [&](const VisitedPlace& each) { return each.document == document && each.path.empty(); });
        for (VisitedPlace& place : *places)
            if (place.document == document)
                place.document = 0;
    }
}

void PlaceStack::DocumentNamed(long document, const std::string& path)
{
    for (std::vector<VisitedPlace>* places : {&behind, &ahead}) {
        for (VisitedPlace& place : *places) {
            if (place.document == document)
                place.path = path;
            else if (place.document == 0 && place.path == path)
                place.document = document;
        }
    }
}

} // namespace wren
