# The oldest way of naming a root.
file a.c
    int one(void) { return 1; }

> begin {"rootUri": null, "rootPath": "$root"}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "files": 1, "...": "..."}]}
