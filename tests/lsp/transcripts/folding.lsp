# A fold ends on the line before its "}", "#else" or "#endif".
file a.c
    #include <a.h>
    #include <b.h>
    /* one
       two */
    #if A
    int a;
    #else
    int b;
    #endif
    int f(void)
    {
        return 1;
    }

> begin
> open a.c
> request textDocument/foldingRange {"textDocument": {"uri": "$uri/a.c"}}
< result [{"startLine": 0, "endLine": 1, "kind": "imports"}, {"startLine": 2, "endLine": 3, "kind": "comment"},
    {"startLine": 4, "endLine": 5}, {"startLine": 6, "endLine": 7}, {"startLine": 10, "endLine": 11}]
