# The other one of the same name, else the one that shares most symbols; null where there is none.
file src/a.c
    int one(void);
file include/a.h
    int one(void);
file src/alone.c
    int two(void);
file near/twice.h
    int unlike(void);
file near/twice.c
    int twice(void) { return 2; }
file far/twice.h
    int twice(void);
file x/api.h
    int three(void);
file y/api.h
    int three(void);
    int four(void);
file z/api.c
    int three(void) { return 3; }
    int four(void) { return 4; }
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
# The same directory comes before one that shares more; of two namesakes, the one that shares the most.
> request textDocument/switchSourceHeader {"uri": "$uri/near/twice.c"}
< result "$uri/near/twice.h"
> request textDocument/switchSourceHeader {"uri": "$uri/far/twice.h"}
< result "$uri/near/twice.c"
> request textDocument/switchSourceHeader {"uri": "$uri/z/api.c"}
< result "$uri/y/api.h"
> request textDocument/switchSourceHeader {}
< error -32602 "...uri..."
