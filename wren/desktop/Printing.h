// Printing a document, after the user has chosen a printer.
#pragma once

class QWidget;

namespace wren {

class CodeView;
class Document;

// Shows the system's dialog for printers and files. A failure is shown to the user. GUI thread.
void PrintAsked(QWidget& window, const Document& document, CodeView& view);

} // namespace wren
