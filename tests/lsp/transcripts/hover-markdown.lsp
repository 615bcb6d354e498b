# The first format of the client's list that is spoken.
file a.c
    int one(void); // counts
    int two(void) { return ‹u›one‹u2›() + 1; }

> begin {"capabilities": {"textDocument": {"hover": {"contentFormat": ["markdown", "plaintext"]}}}}
> open a.c
> request textDocument/hover @u
< result {"contents": {"kind": "markdown", "value": "```c\nint one(void)...\n```...counts..."}, "range": "@u..u2"}
