# The three commands, and what they refuse.
file a.c
    int one(void) { return 1; }
file sub/b.c
    int two(void) { return 2; }

> begin
> request workspace/executeCommand {"command": "wren.index", "arguments": []}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "files": 2, "symbols": 2, "size": "...", "indexing": "...", "done": "...", "total": "..."}]}

file sub/c.c
    int three(void) { return 3; }
> request workspace/executeCommand {"command": "wren.index", "arguments": ["$uri/sub/c.c"]}
< result null
> request workspace/symbol {"query": "three"}
< result [{"name": "three", "...": "..."}]

> request workspace/executeCommand {"command": "wren.tags", "arguments": ["$uri"]}
< result "$root/tags"
content tags !_TAG_...
    one	a.c	1;"	f
    three	sub/c.c	1;"	f
    two	sub/b.c	1;"	f
    ...

> request workspace/executeCommand {"command": "wren.nothing"}
< error -32602 "...wren.nothing..."
> request workspace/executeCommand {"command": "wren.index", "arguments": ["http://example.org/"]}
< error -32602
> request workspace/executeCommand {"command": "wren.tags", "arguments": ["$uri/sub"]}
< error -32602
> request workspace/executeCommand {"command": "wren.index", "arguments": [5]}
< error -32602
> request workspace/executeCommand {}
< error -32602 "...command..."
