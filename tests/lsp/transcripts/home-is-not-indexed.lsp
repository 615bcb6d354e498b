# The home directory as root is served without an index, which is said once.
environment HOME $root
file a.c
    int ‹d›sum‹d2›(int a) { return a; }
    int three(void) { return ‹use›sum(1); }

> begin {"rootUri": "$uri"}
< notify window/showMessage {"type": 3, "message": "$root is not indexed..."}
> open a.c
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
> request textDocument/definition @use
< result [{"uri": "$uri/a.c", "range": "@d..d2"}]
< none window/showMessage
