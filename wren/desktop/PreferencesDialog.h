// The preferences: the editor's own page, and the plug-in's panels.
#pragma once

#include "vetch/app/BLooper.h"
#include "wren/core/Preferences.h"

#include <QDialog>
#include <QKeySequence>
#include <QString>

#include <utility>
#include <vector>

class QListWidget;
class QStackedWidget;

namespace wren {

class EditorPage;
class GuiLoop;
class Host;
class QtDisplay;

// A change takes effect at once. GUI thread.
class PreferencesDialog : public QDialog {
    Q_OBJECT
public:
    PreferencesDialog(Host& host, QtDisplay& display, GuiLoop& loop, const PreferenceValues& values,
                      QWidget* parent); // borrowed
    ~PreferencesDialog() override;      // closes the panels

    void SetMenuKeys(const std::vector<std::pair<QString, QKeySequence>>& keys); // as EditorPage's

signals:
    void Changed(const PreferenceValues& values);

protected:
    void keyPressEvent(QKeyEvent* event) override; // Enter presses only the button that has the keyboard

private:
    void AddPage(const QIcon& icon, const QString& title, QWidget* page);
    void AddPanels();

    Host& host;
    QtDisplay& display;
    GuiLoop& loop;
    EditorPage* editor;
    QListWidget* titles;
    QStackedWidget* pages;
    std::vector<vetch::LooperToken> panels;
};

} // namespace wren
