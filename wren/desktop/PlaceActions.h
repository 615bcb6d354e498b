// Going to places: along the history of lookups, to a line, to a match.
#pragma once

#include "wren/text/PlaceStack.h"

#include <QObject>

#include <optional>
#include <string>

namespace wren {

class DocumentActions;
class EditorTabs;
class Host;

// Keeps the history of places. GUI thread.
class PlaceActions : public QObject {
    Q_OBJECT
public:
    PlaceActions(Host& host, EditorTabs& tabs, DocumentActions& documents); // borrowed

    void GoBack(); // to the place that the last lookup left; beeps when there is none
    void GoForward();
    void GoToLine(); // asks the user for the line
    // Lines and columns count from 1, columns in bytes; 0 for none.
    void OpenMatch(const std::string& path, long line, long column = 0);

    bool CanGoBack() const { return places.CanGoBack(); }
    bool CanGoForward() const { return places.CanGoForward(); }

    // Keeps the places where they are while a text changes: 'inserted' bytes replace 'removed' ones at 'offset'.
    void TextMoves(long document, long offset, long removed, long inserted);

signals:
    void Went(); // to another place; the history may have changed

private:
    VisitedPlace Here() const;
    void GoTo(const std::optional<VisitedPlace>& place);

    Host& host;
    EditorTabs& tabs;
    DocumentActions& documents;
    PlaceStack places;
};

} // namespace wren
