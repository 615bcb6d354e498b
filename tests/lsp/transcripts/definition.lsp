# From a use to the definition, and from there back to the declaration.
file a.h
    int ‹d›sum‹d2›(int, int);
file a.c
    #include "a.h"
    int ‹f›sum‹f2›(int a, int b)
    {
        return a + b;
    }
    int three(void)
    {
        return ‹use›sum(1, 2);
    }

> begin
> open a.c
> until textDocument/definition @f
< result [{"uri": "$uri/a.h", "range": "@d..d2"}]
> request textDocument/definition @use
< result [{"uri": "$uri/a.c", "range": "@f..f2"}]
> request textDocument/definition @f
< result [{"uri": "$uri/a.h", "range": "@d..d2"}]
