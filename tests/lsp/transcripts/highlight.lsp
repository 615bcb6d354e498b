# Reads (2) and writes (3) of the same name in the same text.
file a.c
    int f(int ‹p›n‹p2›)
    {
        int ‹d›sum‹d2› = 0;
        ‹w›sum‹w2› += ‹r›n‹r2›;
        ++‹i›sum‹i2›;
        g(&‹a›sum‹a2›);
        return ‹u›sum‹u2› == 1;
    }

> begin
> open a.c
> request textDocument/documentHighlight @u
< result [{"range": "@d..d2", "kind": 3}, {"range": "@w..w2", "kind": 3}, {"range": "@i..i2", "kind": 3},
    {"range": "@a..a2", "kind": 3}, {"range": "@u..u2", "kind": 2}]
> request textDocument/documentHighlight @r
< result [{"range": "@p..p2", "kind": "..."}, {"range": "@r..r2", "kind": 2}]
# Nothing is there.
> request textDocument/documentHighlight {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 1, "character": 0}}
< result []
