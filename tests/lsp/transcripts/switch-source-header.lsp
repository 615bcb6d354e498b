# The other one of the same name, else the one that shares most symbols; null where there is none.
file src/a.c
    int one(void);
file include/a.h
    int one(void);
file src/alone.c
    int two(void);
file src/view.c
    int draw(void) { return 1; }
    int hide(void) { return 2; }
    int move(void) { return 3; }
file include/some.h
    int draw(void);
file include/widgets.h
    int hide(void);
    int move(void);
file src/main.c
    int draw(void);

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/switchSourceHeader {"uri": "$uri/src/a.c"}
< result "$uri/include/a.h"
> request textDocument/switchSourceHeader {"uri": "$uri/include/a.h"}
< result "$uri/src/a.c"
> request textDocument/switchSourceHeader {"uri": "$uri/src/view.c"}
< result "$uri/include/widgets.h"
> request textDocument/switchSourceHeader {"uri": "$uri/include/some.h"}
< result "$uri/src/view.c"
> request textDocument/switchSourceHeader {"uri": "$uri/src/alone.c"}
< result null
> request textDocument/switchSourceHeader {}
< error -32602 "...uri..."
