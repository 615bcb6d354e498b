# A client that fills ranges later gets the file first.
file a.c
    int ‹o›one‹o2›(void) { return 1; }

> begin {"capabilities": {"workspace": {"symbol": {"resolveSupport": {"properties": ["location.range"]}}}}}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "one"}
< result [{"name": "one", "kind": 12, "location": {"uri": "$uri/a.c"}, "data": "..."}]
> request workspaceSymbol/resolve {"name": "one", "kind": 12, "location": {"uri": "$uri/a.c"}, "data": {"line": 1, "name": "one"}}
< result {"name": "one", "kind": 12, "location": {"uri": "$uri/a.c", "range": "@o..o2"}, "data": "..."}
> request workspaceSymbol/resolve {"name": "one"}
< error -32602
