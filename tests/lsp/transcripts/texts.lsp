# What a client says about texts, right and wrong. The open text counts, until it is closed.
file a.c
    int ‹on›one‹on2›(void) { return 1; }

> begin
> change a.c [{"text": "x"}]
< notify window/logMessage {"type": 2, "message": "...a.c is not open..."}
> notify textDocument/didClose a.c
< notify window/logMessage {"type": 2, "message": "...a.c is not open..."}
> open a.c
> request textDocument/documentSymbol a.c
< result [{"name": "one", "...": "..."}]
> change a.c [{"range": "@on..on2", "text": "seven"}]
> request textDocument/documentSymbol a.c
< result [{"name": "seven", "...": "..."}]
# A range whose end comes first.
> change a.c [{"range": {"start": {"line": 0, "character": 9}, "end": {"line": 0, "character": 4}}, "text": "eight"}]
> request textDocument/documentSymbol a.c
< result [{"name": "eight", "...": "..."}]
# Several changes, each to the text that the one before has left; the last one is behind the end of the text.
> change a.c [{"text": "int nine;\n"}, {"range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 8}}, "text": "ten"},
    {"range": {"start": {"line": 77, "character": 0}, "end": {"line": 99, "character": 4}}, "text": "int eleven;"}]
> request textDocument/documentSymbol a.c
< result [{"name": "ten", "...": "..."}, {"name": "eleven", "...": "..."}]
# A version that goes back is applied and logged.
> notify textDocument/didChange {"textDocument": {"uri": "$uri/a.c", "version": 1}, "contentChanges": [{"text": "int back;"}]}
< notify window/logMessage {"type": 2, "message": "...version..."}
> request textDocument/documentSymbol a.c
< result [{"name": "back", "...": "..."}]
# A second didOpen is a new text.
> open a.c
< notify window/logMessage {"type": 2, "message": "...already open..."}
> request textDocument/documentSymbol a.c
< result [{"name": "one", "...": "..."}]
> change a.c [{"text": "int gone;"}]
> notify textDocument/didClose a.c
> request textDocument/documentSymbol a.c
< result [{"name": "one", "...": "..."}]
> request textDocument/documentSymbol no-such.c
< error -32602 "...no-such.c..."
