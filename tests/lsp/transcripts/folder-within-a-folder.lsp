# A file within two folders belongs to the inner one, and is found and counted once. The outer one sees what is typed.
file a.c
    int outerOnly(void) { return ‹u›innerOnly(); }
file inner/b.c
    int innerOnly(void) { return 2; }

> begin {"workspaceFolders": [{"uri": "$uri", "name": "outer"}, {"uri": "$uri/inner", "name": "inner"}]}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "innerOnly"}
< result [{"name": "innerOnly", "...": "..."}]
> request workspace/symbol {"query": "outerOnly"}
< result [{"name": "outerOnly", "...": "..."}]
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "files": 1, "symbols": 1, "...": "..."}, {"root": "$root/inner", "files": 1, "symbols": 1, "...": "..."}]}
> open a.c
> open inner/b.c
> change inner/b.c [{"text": "\n\nint innerOnly(void) { return 2; }\n"}]
> request textDocument/definition @u
< result [{"uri": "$uri/inner/b.c", "range": {"start": {"line": 2, "...": "..."}, "...": "..."}}]
> request workspace/symbol {"query": "innerOnly"}
< result [{"name": "innerOnly", "location": {"uri": "$uri/inner/b.c", "range": {"start": {"line": 2, "...": "..."}, "...": "..."}}, "...": "..."}]
