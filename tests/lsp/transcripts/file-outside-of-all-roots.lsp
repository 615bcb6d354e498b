# A file outside of all roots knows its own text and what it includes, and nothing of the roots.
file project/a.c
    int inside(void) { return 1; }
file outside/b.h
    int ‹d›declared‹d2›(void);
file outside/b.c
    #include "b.h"
    int here(void) { return ‹u›declared() + ‹i›inside(); }

> begin {"rootUri": "$uri/project"}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> open outside/b.c
> request textDocument/definition @u
< result [{"uri": "$uri/outside/b.h", "range": "@d..d2"}]
> request textDocument/definition @i
< result []
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root/project", "files": 1, "...": "..."}]}
