# --root beats what the client names.
run --root $root/one
file one/a.c
    int inOne(void) { return 1; }
file two/b.c
    int inTwo(void) { return 2; }

> begin {"rootUri": "$uri/two"}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root/one", "files": 1, "...": "..."}]}
