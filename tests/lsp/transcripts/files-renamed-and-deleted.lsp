# A definition whose file gets another name, and then goes away.
file a.c
    int g(void) { return ‹u›f‹u2›(1); }
file b.c
    int ‹i›f‹i2›(int a) { return a; }

> begin
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
rename b.c c.c
> notify workspace/didChangeWatchedFiles {"changes": [{"uri": "$uri/b.c", "type": 3}, {"uri": "$uri/c.c", "type": 1}]}
> until textDocument/definition @u
< result [{"uri": "$uri/c.c", "range": "@i..i2"}]
delete c.c
> until textDocument/definition @u
< result []
> request textDocument/references @u {"context": {"includeDeclaration": true}}
< result [{"uri": "$uri/a.c", "range": "@u..u2"}]
