# A client that takes links gets the name in question, and the whole extent with the name in it.
file a.h
    int sum(int);
file a.c
    #include "‹i›a.h‹i2›"
    ‹e›int ‹f›sum‹f2›(int a)
    {
        return a;
    }‹e2›
    int three(void) { return ‹u›sum‹u2›(3); }
    ‹t›#define ONE 1
    int ‹nothing›unknown_name;

> begin {"capabilities": {"textDocument": {"definition": {"linkSupport": true}, "declaration": {"linkSupport": false}}}}
> open a.c
> request textDocument/definition @u
< result [{"originSelectionRange": "@u..u2", "targetUri": "$uri/a.c", "targetRange": "@e..e2", "targetSelectionRange": "@f..f2"}]
> request textDocument/definition @i
< result [{"originSelectionRange": "@i..i2", "targetUri": "$uri/a.h",
    "targetRange": {"start": {"line": 0, "character": 0}, "end": {"line": 0, "character": 0}},
    "targetSelectionRange": {"start": {"line": 0, "character": 0}, "end": {"line": 0, "character": 0}}}]
> request textDocument/declaration @u
< result [{"uri": "$uri/a.h", "range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 7}}}]
