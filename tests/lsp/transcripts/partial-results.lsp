# References come in parts only when there are many; few come in the answer.
file a.c
    int one(void);
    int two(void) { return ‹u›one(); }

> begin
> open a.c
> request textDocument/references @u {"context": {"includeDeclaration": false}, "partialResultToken": "part"}
< result [{"uri": "$uri/a.c", "...": "..."}]
< none $/progress {"token": "part", "...": "..."}
