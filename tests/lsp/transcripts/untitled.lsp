# A text that is in no file yet has the symbols of its own; its URI comes back as it was.
file a.c
    int elsewhere(void);

> begin
> notify textDocument/didOpen {"textDocument": {"uri": "untitled:Untitled-1", "languageId": "c", "version": 1, "text": "int one(void);\nint two(void) { return one(); }\n"}}
> request textDocument/definition {"textDocument": {"uri": "untitled:Untitled-1"}, "position": {"line": 1, "character": 24}}
< result [{"uri": "untitled:Untitled-1", "range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 7}}}]
> request textDocument/documentSymbol {"textDocument": {"uri": "untitled:Untitled-1"}}
< result [{"name": "one", "...": "..."}, {"name": "two", "...": "..."}]
> request textDocument/references {"textDocument": {"uri": "untitled:Untitled-1"}, "position": {"line": 1, "character": 24}, "context": {"includeDeclaration": true}}
< result [{"uri": "untitled:Untitled-1", "...": "..."}, {"uri": "untitled:Untitled-1", "...": "..."}]
> notify textDocument/didClose {"textDocument": {"uri": "untitled:Untitled-1"}}
> request textDocument/documentSymbol {"textDocument": {"uri": "untitled:Untitled-1"}}
< error -32602 "...untitled:Untitled-1..."
