# A file within two folders belongs to the inner one, and is found once.
file a.c
    int outerOnly(void) { return 1; }
file inner/b.c
    int innerOnly(void) { return 2; }

> begin {"workspaceFolders": [{"uri": "$uri", "name": "outer"}, {"uri": "$uri/inner", "name": "inner"}]}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "innerOnly"}
< result [{"name": "innerOnly", "...": "..."}]
> request workspace/symbol {"query": "outerOnly"}
< result [{"name": "outerOnly", "...": "..."}]
