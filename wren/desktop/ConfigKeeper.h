// Gives each text the form that the .editorconfig files around its file say.
#pragma once

#include "wren/text/EditorConfig.h"

#include <QObject>
#include <QString>

#include <functional>
#include <string>

namespace wren {

class DocumentActions;
class EditorTabs;
class Host;

// Asks when a text gets its file, and when it is saved. GUI thread.
class ConfigKeeper : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        EditorTabs& tabs;
        DocumentActions& documents;
        std::function<bool()> isWanted;           // by the preferences
        std::function<void(const QString&)> warn; // shows why a file is not followed
    };
    explicit ConfigKeeper(Parts parts);

    void Follow(long document, const std::string& path);
    TextEncoding EncodingFor(const std::string& path) const; // UTF-8 when none is given
    void FollowAll();                                        // the preference may be another one now

private:
    base::Result<EditorConfig> ConfigFor(const std::string& path) const;

    const Parts parts;
    std::string told; // the last warning: a whole tree has the same
};

} // namespace wren
