# No request stays without an answer when the client shuts the server down.
file a.c
    int one(void) { return 1; }

> begin
> open a.c
> request textDocument/documentSymbol a.c
> request workspace/symbol {"query": "one"}
> request workspace/executeCommand {"command": "wren.status"}
> request shutdown
< result null
< result #2 [{"name": "one", "...": "..."}]
< result #3 "..."
< result #4 {"roots": "..."}
> request shutdown
< error -32600
> notify exit
< exit 0
