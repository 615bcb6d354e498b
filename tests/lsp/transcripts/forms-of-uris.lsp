# A URI may name the host, or leave out the slashes of it.
file a.c
    int one(void) { return 1; }

> begin
> request textDocument/documentSymbol {"textDocument": {"uri": "file:$root/a.c"}}
< result [{"name": "one", "location": {"uri": "$uri/a.c", "...": "..."}, "...": "..."}]
> request textDocument/documentSymbol {"textDocument": {"uri": "file://localhost$root/a.c"}}
< result [{"name": "one", "location": {"uri": "$uri/a.c", "...": "..."}, "...": "..."}]
