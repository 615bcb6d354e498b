// An item of the menus, as the preferences show it.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <string>

namespace wren {

struct MenuItem {
    std::string id; // "File.Close"; the settings name the item by it
    QString title;  // for people: "File: Close"
    QList<QKeySequence> usual;

    bool operator==(const MenuItem&) const = default;
};

} // namespace wren
