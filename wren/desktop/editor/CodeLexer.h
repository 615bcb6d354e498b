// Colours the words of C, C++ and Objective-C, and of what else is in a source tree.
#pragma once

#include "wren/desktop/editor/EditorLook.h"
#include "wren/desktop/editor/FileLanguages.h"

#include <Qsci/qscilexercpp.h>

#include <string>
#include <string_view>

namespace wren {

// A header may be of any language of the family, and gets the words of C++ and those of Objective-C that are no usual
// names in C. Sources have the words of their own language.
// Set the lexer up before the view gets it, and give it to the view again after a change.
class CodeLexer : public QsciLexerCPP {
    Q_OBJECT
public:
    explicit CodeLexer(QObject* parent = nullptr);

    static bool IsCode(const std::string& path); // by the end of its name

    // By the file's name, or by the text's beginning. What is of no language that is known has the text's colour.
    void SetLanguageFor(const std::string& path, std::string_view beginning = {});

    // Gives the words of a text without colours styles of their own, which all look alike: one that is measured word by
    // word is measured from memory, and very long lines need that.
    void SeparateWords(bool separate) { separatesWords = separate; }
    void SetLook(const EditorLook& look);

    // The family's own words, and those of Objective-C with the types that its frameworks have everywhere.
    static constexpr int kFirstSet = 1;
    static constexpr int kObjectiveCSet = 2;
    const char* keywords(int set) const override;

    const char* lexer() const override;
    QColor color(int style) const override;
    QColor paper(int style) const override;
    QFont font(int style) const override;
    bool eolFill(int style) const override;

private:
    EditorLook look;
    const FileLanguage* other = nullptr; // not of the family
    bool separatesWords = false;
    enum class Language { None, C, Cplusplus, Header, ObjectiveC } language = Language::None;
};

} // namespace wren
