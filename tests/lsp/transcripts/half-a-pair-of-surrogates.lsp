# An editor may cut a character in two. Its half is one unit, and the text is read.
file a.c
    int one;

> begin
> body {"jsonrpc": "2.0", "method": "textDocument/didOpen", "params": {"textDocument": {"uri": "$uri/a.c", "languageId": "c", "version": 1, "text": "/* \ud83d */ int two;"}}}
> request textDocument/documentSymbol a.c
< result [{"name": "two", "location": {"range": {"start": {"line": 0, "character": 8}, "...": "..."}, "...": "..."}, "...": "..."}]
> body {"jsonrpc": "2.0", "method": "textDocument/didChange", "params": {"textDocument": {"uri": "$uri/a.c", "version": 2}, "contentChanges": [{"range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 4}}, "text": "\ude00\ude00"}]}}
> request textDocument/documentSymbol a.c
< result [{"name": "two", "location": {"range": {"start": {"line": 0, "character": 10}, "...": "..."}, "...": "..."}, "...": "..."}]
