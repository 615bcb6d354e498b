# Of a variable, of a function's result, of a typedef: the body of the type.
file a.c
    struct ‹s›node‹s2› { struct node *next; };
    typedef struct node node_t;
    ‹t›node_t *first(void);
    int f(void)
    {
        node_t *start = ‹f›first();
        return ‹v›start->next != 0;
    }

> begin
> open a.c
> request textDocument/typeDefinition @v
< result [{"uri": "$uri/a.c", "range": "@s..s2"}]
> request textDocument/typeDefinition @f
< result [{"uri": "$uri/a.c", "range": "@s..s2"}]
> request textDocument/typeDefinition @t
< result [{"uri": "$uri/a.c", "range": "@s..s2"}]
