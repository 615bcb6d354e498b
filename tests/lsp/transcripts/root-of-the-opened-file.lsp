# A client without a folder: each opened file has its own root.
file project/.wren
file project/src/a.c
    int ‹f›one‹f2›(void) { return 1; }
file project/other/b.c
    int two(void) { return 2; }

> begin {"rootUri": null}
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
> open project/src/a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root/project", "files": 2, "...": "..."}]}
