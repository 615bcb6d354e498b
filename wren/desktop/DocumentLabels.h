// How the window names the documents: tabs, title and status line.
#pragma once

namespace wren {

class Document;
class Host;
class MainWindow;

// GUI thread.
class DocumentLabels {
public:
    DocumentLabels(Host& host, MainWindow& window); // borrowed

    void ShowName(const Document& document, bool modified); // in its tab, and in the title
    void ShowTitle();                                       // of the current document
    void ShowCaret();                                       // its place, in the status line

private:
    Host& host;
    MainWindow& window;
};

} // namespace wren
