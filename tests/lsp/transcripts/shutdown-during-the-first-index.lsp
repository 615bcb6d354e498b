# The server ends at once, whatever runs.
file hanging-ctags
    #!/bin/sh
    exec sleep 100
file a.c
    int one(void) { return 1; }
environment CPLUSTAGS_CTAGS $root/hanging-ctags

> begin
> open a.c
> request shutdown
< result null
> notify exit
< exit 0
