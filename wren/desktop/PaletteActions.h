// Going to symbols and files by a few letters of their names.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"
#include "wren/desktop/symbols/PaletteQuestions.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace wren {

class AskedTexts;
class FileNames;
class Landing;
class MainWindow;
class Palette;
class SymbolEngine;

// Opens the palette, whose answers come later from the engine. GUI thread.
class PaletteActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        SymbolEngine& engine;
        AskedTexts& texts;
        Landing& landing;
        MainWindow& window;
        std::function<std::vector<std::string>()> recentFiles; // the last one first
    };
    explicit PaletteActions(Parts parts);

    void GoToSymbol(); // of the project and the system
    void GoToFile();   // of the project
    void GoToSymbolOfText();
    void GoToSymbolOfScope(const std::vector<PaletteItem>& siblings);

    void AskAgain(); // answers may be other ones now
    Palette& ThePalette();

private:
    // Answers the letters on the engine's thread.
    using Answer = std::function<PaletteAnswer(const std::string& letters, const Question& question)>;
    void AskEngine(const QString& letters, Answer answer);

    const Parts parts;
    std::shared_ptr<FileNames> names; // used by one question at a time
    Palette* palette = nullptr;       // made when it is needed; owned by the window
};

} // namespace wren
