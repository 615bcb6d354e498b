# Mentions in all files, with the declarations when they are asked for; in parts for a client that takes parts.
file a.h
    int ‹d›sum‹d2›(int, int);
file a.c
    #include "a.h"
    int ‹f›sum‹f2›(int a, int b) { return a + b; }
    int three(void) { return ‹u›sum‹u2›(1, 2); }
    #define SIX ‹m›sum‹m2›(2, 4)
    #if 0
    int never = sum(0, 0);
    #endif
    // sum of nothing
    const char *text = "sum";
file b.c
    #include "a.h"
    int seven = ‹b›sum‹b2›(3, 4);

> begin
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/references @u {"context": {"includeDeclaration": true}}
< result [{"uri": "$uri/a.c", "range": "@f..f2"}, {"uri": "$uri/a.c", "range": "@u..u2"}, {"uri": "$uri/a.c", "range": "@m..m2"},
    {"uri": "$uri/a.h", "range": "@d..d2"}, {"uri": "$uri/b.c", "range": "@b..b2"}]
> request textDocument/references @d {"context": {"includeDeclaration": false}}
< result [{"uri": "$uri/a.c", "range": "@u..u2"}, {"uri": "$uri/a.c", "range": "@m..m2"}, {"uri": "$uri/b.c", "range": "@b..b2"}]
> request textDocument/references {"textDocument": {"uri": "$uri/a.c"}, "position": "@u"}
< error -32602 "...context..."
