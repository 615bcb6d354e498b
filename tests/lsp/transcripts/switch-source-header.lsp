# The other one of the same name; null where there is none.
file src/a.c
    int one(void);
file include/a.h
    int one(void);
file src/alone.c
    int two(void);

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/switchSourceHeader {"uri": "$uri/src/a.c"}
< result "$uri/include/a.h"
> request textDocument/switchSourceHeader {"uri": "$uri/include/a.h"}
< result "$uri/src/a.c"
> request textDocument/switchSourceHeader {"uri": "$uri/src/alone.c"}
< result null
> request textDocument/switchSourceHeader {}
< error -32602 "...uri..."
