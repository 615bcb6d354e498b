# From inside out, for each of several places.
file a.c
    int x = ‹l›f(‹a›a‹a2›)‹r›;

> begin
> open a.c
> request textDocument/selectionRange {"textDocument": {"uri": "$uri/a.c"}, "positions": ["@a", "@r"]}
< result [{"range": "@a..a2", "parent": {"range": {"start": {"line": 0, "character": 9}, "end": {"line": 0, "character": 12}},
    "parent": {"...": "..."}}}, {"...": "..."}]
