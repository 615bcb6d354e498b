# The index may be complete before the client agrees to show the work: it then sees its begin and its end.
by-hand window/workDoneProgress/create
file a.c
    int one(void) { return 1; }

> begin {"capabilities": {"window": {"workDoneProgress": true}}}
< request window/workDoneProgress/create
> request workspace/executeCommand {"command": "wren.index"}
< result null
< none $/progress
> answer null
< notify $/progress {"token": "...", "value": {"kind": "begin", "...": "..."}}
< notify $/progress {"token": "...", "value": {"kind": "end", "...": "..."}}
