# A tree may hold a link where the tags file goes. What it leads to stays as it is.
file a.c
    int one(void) { return 1; }
file precious
    keep me
link tags precious

> begin
> request workspace/executeCommand {"command": "wren.tags"}
< error -32803
content precious keep me
    
