# The first index is shown, however small, and its end says what it holds.
file a.c
    int one(void) { return 1; }
    int two(void) { return 2; }

> begin {"capabilities": {"window": {"workDoneProgress": true}}}
< request window/workDoneProgress/create {"token": "..."}
< notify $/progress {"token": "...", "value": {"kind": "begin", "title": "Indexing $root", "cancellable": true, "percentage": 0}}
< notify $/progress {"token": "...", "value": {"kind": "end", "message": "1 file, 2 symbols"}}
