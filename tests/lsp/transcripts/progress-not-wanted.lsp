# Neither a client that cannot show progress, nor one that refuses to, gets any.
file a.c
    int one(void) { return 1; }

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
< none window/workDoneProgress/create
< none $/progress
