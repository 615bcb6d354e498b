# The first encoding of the client's list that is spoken here.
file a.c
    int one(void) { return 1; }

> request initialize {"processId": null, "rootUri": "$uri", "capabilities": {"textDocument": {"documentSymbol": {"hierarchicalDocumentSymbolSupport": true}}, "general": {"positionEncodings": ["utf-32", "utf-8", "utf-16"]}},
    "initializationOptions": {"systemHeaders": false}}
< result {"capabilities": {"positionEncoding": "utf-8", "...": "..."}, "...": "..."}
> notify initialized {}
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/a.c", "languageId": "c", "version": 1, "text": "/* äöü */ int one;"}}
> request textDocument/documentSymbol a.c
< result [{"name": "one", "selectionRange": {"start": {"line": 0, "character": 17}, "end": {"line": 0, "character": 20}}, "...": "..."}]
