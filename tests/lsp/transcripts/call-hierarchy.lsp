# Who calls a function, and whom it calls.
file a.c
    static int ‹o›one‹o2›(void) { return 1; }
    ‹t0›int ‹t›two‹t2›(void)
    {
        return ‹c›one‹c2›() + ‹e›one‹e2›();
    }‹t9›
    int four(void) { return two() * 2; }
    int pointer = 0; ‹n›

> begin
> open a.c
> request textDocument/prepareCallHierarchy @c
< result [{"name": "one", "kind": 12, "uri": "$uri/a.c", "selectionRange": "@o..o2", "...": "..."}]
> request textDocument/prepareCallHierarchy @n
< result null
> request callHierarchy/incomingCalls {"item": {"name": "one", "kind": 12, "uri": "$uri/a.c", "range": "@o..o2", "selectionRange": "@o..o2"}}
< result [{"from": {"name": "two", "kind": 12, "uri": "$uri/a.c", "range": "@t0..t9", "selectionRange": "@t..t2", "...": "..."},
    "fromRanges": ["@c..c2", "@e..e2"]}]
> request callHierarchy/outgoingCalls {"item": {"name": "two", "kind": 12, "uri": "$uri/a.c", "range": "@t0..t9", "selectionRange": "@t..t2"}}
< result [{"to": {"name": "one", "kind": 12, "uri": "$uri/a.c", "selectionRange": "@o..o2", "...": "..."},
    "fromRanges": ["@c..c2", "@e..e2"]}]
> request callHierarchy/incomingCalls {}
< error -32602 "...item..."
