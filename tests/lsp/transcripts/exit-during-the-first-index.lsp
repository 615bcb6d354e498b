# The server ends at once, with an answer to what waits.
file hanging-ctags
    #!/bin/sh
    exec sleep 100
file a.c
    int one(void) { return 1; }
environment CPLUSTAGS_CTAGS $root/hanging-ctags

> begin
> request workspace/executeCommand {"command": "wren.index"}
> notify exit
< error -32800
< exit 1
