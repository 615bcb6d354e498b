# The setting adds what comments mention, in other files too.
file a.c
    // ‹c›area‹c2› of a circle
    int ‹d›area‹d2›(void);
file b.c
    /* Calls ‹b›area‹b2›. */

> begin {"initializationOptions": {"references": {"comments": true}, "systemHeaders": false}}
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/references @d {"context": {"includeDeclaration": false}}
< result [{"uri": "$uri/a.c", "range": "@c..c2"}, {"uri": "$uri/b.c", "range": "@b..b2"}]
> request textDocument/references @d {"context": {"includeDeclaration": true}}
< result [{"uri": "$uri/a.c", "range": "@c..c2"}, {"uri": "$uri/a.c", "range": "@d..d2"}, {"uri": "$uri/b.c", "range": "@b..b2"}]
