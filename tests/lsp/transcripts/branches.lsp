# Definitions in both branches of an #if are both answers, the nearest above first. A macro of the same name, when it
# is included, stands before a definition.
file a.h
    #define ‹m›area‹m2›(x) (x)
file other.c
    int area(int x) { return x; }
file a.c
    #include "a.h"
    #if A
    static int ‹i›pick‹i2›(void) { return 1; }
    #else
    static int ‹e›pick‹e2›(void) { return 2; }
    #endif
    int use(void) { return ‹u›pick() + ‹a›area(1); }

> begin
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/definition @u
< result [{"uri": "$uri/a.c", "range": "@e..e2"}, {"uri": "$uri/a.c", "range": "@i..i2"}]
> request textDocument/definition @a
< result [{"uri": "$uri/a.h", "range": "@m..m2"}, "..."]
