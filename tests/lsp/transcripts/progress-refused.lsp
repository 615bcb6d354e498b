# A client that refuses to show the work gets no progress, and the index is made all the same.
by-hand window/workDoneProgress/create
file a.c
    int ‹f›one‹f2›(void) { return 1; }

> begin {"capabilities": {"window": {"workDoneProgress": true}}}
< request window/workDoneProgress/create
> refuse -32603
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "one"}
< result [{"name": "one", "...": "..."}]
< none $/progress
