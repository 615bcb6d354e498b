# A file that is open but not on the disk counts for others as well, until it is closed.
file a.c
    int three(void) { return ‹u›fresh(1); }

> begin
> open a.c
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/new.c", "languageId": "c", "version": 1, "text": "int fresh(int a) { return a; }\n"}}
> until textDocument/definition @u
< result [{"uri": "$uri/new.c", "range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 9}}}]
> request workspace/symbol {"query": "fresh"}
< result [{"name": "fresh", "...": "..."}]
> notify textDocument/didClose {"textDocument": {"uri": "$uri/new.c"}}
> until textDocument/definition @u
< result []
