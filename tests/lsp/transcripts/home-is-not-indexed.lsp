# The home directory as root is served without an index, which is said once: open texts, and what they include.
environment HOME $root
file sub/sum.h
    int ‹d›sum‹d2›(int a);
file a.c
    #include "sub/sum.h"
    int three(void) { return ‹use›sum(1) + ‹no›elsewhere(); }
file b.c
    int elsewhere(void) { return 2; }

> begin {"rootUri": "$uri"}
< notify window/showMessage {"type": 3, "message": "$root is not indexed..."}
> open a.c
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
> request textDocument/definition @use
< result [{"uri": "$uri/sub/sum.h", "range": "@d..d2"}]
> request textDocument/definition @no
< result []
> open b.c
> request textDocument/definition @no
< result [{"uri": "$uri/b.c", "...": "..."}]
< none window/showMessage
