# A request that waits for the index ends as soon as it is cancelled.
file hanging-ctags
    #!/bin/sh
    exec sleep 100
file a.c
    int one(void) { return 1; }
environment CPLUSTAGS_CTAGS $root/hanging-ctags

> begin
> request workspace/executeCommand {"command": "wren.index"}
> notify $/cancelRequest {"id": 2}
< error -32800
# Others are answered meanwhile; cancelling one that has its answer, or none at all, does nothing.
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "indexing": true, "files": 0, "...": "..."}]}
> notify $/cancelRequest {"id": 3}
> notify $/cancelRequest {"id": "no such"}
