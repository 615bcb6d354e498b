# A request sees every change that was sent before it, and none that was sent after.
file a.c
    int one(void) { return 1; }

> begin
> open a.c
> change a.c [{"text": "int first;"}]
> request textDocument/documentSymbol a.c
> change a.c [{"text": "int second;"}]
> request textDocument/documentSymbol a.c
> notify textDocument/didClose a.c
< result #2 [{"name": "first", "...": "..."}]
< result #3 [{"name": "second", "...": "..."}]
