// The preferences: the editor's own pages, and the plug-in's panels.
#pragma once

#include "vetch/app/BLooper.h"
#include "wren/core/Preferences.h"
#include "wren/desktop/PanelValues.h"
#include "wren/desktop/state/MenuItem.h"

#include <QDialog>
#include <QString>

#include <vector>

class QIcon;
class QListWidget;
class QStackedWidget;

namespace wren {

class EditorPages;
class GuiLoop;
class Host;
class PreferenceSearch;
class QtDisplay;

// A change takes effect at once, and "Cancel" takes all of them back. GUI thread.
class PreferencesDialog : public QDialog {
    Q_OBJECT
public:
    PreferencesDialog(Host& host, QtDisplay& display, GuiLoop& loop, const PreferenceValues& values,
                      QWidget* parent); // borrowed
    ~PreferencesDialog() override;      // closes the panels

    void SetMenuItems(const std::vector<MenuItem>& items); // as EditorPages's

signals:
    void Changed(const PreferenceValues& values);

protected:
    void keyPressEvent(QKeyEvent* event) override; // Enter presses only the button that has the keyboard
    void done(int result) override;

private:
    void AddEditorPages();
    void AddPanels();
    void AddArea(QWidget* content, bool grows);
    void AddTitle(const QIcon& icon, const QString& title, QWidget* page);
    void ShowPage(int row);
    void LeaveField();
    void TakeBack();

    Host& host;
    QtDisplay& display;
    GuiLoop& loop;
    const PreferenceValues first; // those of the editor, when it was opened
    EditorPages* editor;
    QListWidget* titles;
    QStackedWidget* pages; // the editor's pages are one of them
    PreferenceSearch* search;
    std::vector<vetch::LooperToken> panels;
    std::vector<PanelValues> panelValues;
};

} // namespace wren
