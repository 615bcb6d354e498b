# The user can end the work that is shown. It begins again with the next change.
file hanging-ctags
    #!/bin/sh
    exec sleep 100
file a.c
    int one(void) { return 1; }
environment CPLUSTAGS_CTAGS $root/hanging-ctags

by-hand window/workDoneProgress/create
> begin {"capabilities": {"window": {"workDoneProgress": true}}}
< request window/workDoneProgress/create {"token": "wren-1"}
> answer null
< notify $/progress {"token": "wren-1", "value": {"kind": "begin", "...": "..."}}
> notify window/workDoneProgress/cancel {"token": "wren-1"}
< notify $/progress {"token": "wren-1", "value": {"kind": "end", "...": "..."}}
> until workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "indexing": false, "...": "..."}]}
# It begins again with the next change.
> open a.c
< request window/workDoneProgress/create {"token": "wren-2"}
> answer null
< notify $/progress {"token": "wren-2", "value": {"kind": "begin", "...": "..."}}
