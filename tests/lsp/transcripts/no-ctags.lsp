# Without Universal Ctags the user is told the remedy once, and the server lives.
environment CPLUSTAGS_CTAGS $root/no-such-program
file a.c
    int one(void) { return 1; }

> begin {"capabilities": {"window": {"workDoneProgress": true}}}
< notify window/showMessage {"type": 1, "message": "..."}
> open a.c
> request workspace/symbol {"query": "one"}
< result "..."
> request workspace/executeCommand {"command": "wren.index"}
< result null
< none window/showMessage
< none window/workDoneProgress/create
