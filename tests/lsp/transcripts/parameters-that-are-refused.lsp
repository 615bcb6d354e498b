# Names with bytes that are encoded in any way, and parameters that are refused.
file a b#c%d.c
    int ‹i›f‹i2›(int a);
    int g() { return ‹u›f(1); }
file ü.c
    int umlaut(void);

> begin
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/%61%20b%23c%25d.c", "languageId": "c", "version": 1, "text": "int f(int a);\nint g() { return f(1); }\n"}}
> request textDocument/definition {"textDocument": {"uri": "$uri/a%20b%23c%25d.c"}, "position": {"line": 1, "character": 17}}
< result [{"uri": "$uri/%61%20b%23c%25d.c", "...": "..."}]
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "umlaut"}
< result [{"name": "umlaut", "location": {"uri": "$uri/%C3%BC.c", "...": "..."}, "...": "..."}]
> request textDocument/documentSymbol {"textDocument": {"uri": "$uri/%c3%bc.c"}}
< result [{"name": "umlaut", "location": {"uri": "$uri/%C3%BC.c", "...": "..."}, "...": "..."}]
> request textDocument/definition {"textDocument": {"uri": 5}, "position": {"line": 1, "character": 17}}
< error -32602
> request textDocument/definition {"textDocument": {"uri": "$uri/a%20b%23c%25d.c"}, "position": {"line": -1, "character": 17}}
< error -32602
> request textDocument/definition {"textDocument": {"uri": "$uri/a%20b%23c%25d.c"}, "position": {"line": 1.5, "character": 17}}
< error -32602
> request textDocument/definition {"textDocument": {"uri": "$uri/a%20b%23c%25d.c"}}
< error -32602
> request textDocument/definition [1, 2]
< error -32602
> request textDocument/definition {"textDocument": {"uri": "$uri/nope%zz.c"}, "position": {"line": 1, "character": 1}}
< error -32602
> request textDocument/definition {"textDocument": {"uri": "http://x/y.c"}, "position": {"line": 1, "character": 1}}
< error -32602
> request textDocument/nothing {}
< error -32601
> request $/nothing {}
< error -32601
> notify $/nothing {}
> notify workspace/nothing {}
> request workspace/symbol {"query": ""}
< result []
> request workspace/symbol {}
< error -32602
> request textDocument/foldingRange {}
< error -32602
> request textDocument/selectionRange {"textDocument": {"uri": "$uri/ü.c"}, "positions": []}
< result []
> request textDocument/completion {"textDocument": {"uri": "$uri/a%20b%23c%25d.c"}, "position": {"line": 2147483647, "character": 2147483647}}
< result {"...": "..."}
