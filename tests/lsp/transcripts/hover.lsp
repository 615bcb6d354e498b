# The declaration, its comment and its place: plain text unless the client takes markdown.
file a.h
    // The sum of both.
    int sum(int a, int b);
    #define LIMIT 42
file a.c
    #include "a.h"
    int three(void)
    {
        return ‹u›sum‹u2›(1, ‹l›LIMIT‹l2›);
    }
    ‹n›

> begin
> open a.c
> request textDocument/hover @u2
< result {"contents": {"kind": "plaintext", "value": "int sum(int a, int b)...The sum of both.\n\na.h:2"}, "range": "@u..u2"}
> request textDocument/hover @l
< result {"contents": {"kind": "plaintext", "value": "...LIMIT 42..."}, "range": "@l..l2"}
> request textDocument/hover @n
< result null
