# Definitions stand before their declarations; an empty query has no answers.
file a.h
    int ‹d›make_shape‹d2›(void);
file a.c
    int ‹f›make_shape‹f2›(void) { return 1; }

> begin
> until workspace/symbol {"query": "mkshp"}
< result [{"name": "make_shape", "kind": 12, "location": {"uri": "$uri/a.c", "range": "@f..f2"}},
    {"name": "make_shape", "kind": 12, "location": {"uri": "$uri/a.h", "range": "@d..d2"}}]
> request workspace/symbol {"query": ""}
< result []
> request workspace/symbol {"query": "MKSHP"}
< result []
> request workspace/symbol {}
< error -32602
