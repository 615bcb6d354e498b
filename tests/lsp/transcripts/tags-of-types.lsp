# Behind "struct" only such tags are meant, before "(" none of them; labels are found by "goto".
file a.c
    struct ‹s›stat‹s2› { int size; };
    int ‹f›stat‹f2›(const char *path) { return path != 0; }
    typedef struct ‹n›node‹n2› { int key; } node;
    int use(void)
    {
        struct ‹us›stat info;
        node ‹un›*start = 0;
        if (‹uf›stat("a"))
            goto ‹ul›done;
        info.size = ‹ut›(node *)start == 0;
    ‹l›done‹l2›:
        return 0;
    }
    ‹w›node *other;

> begin
> open a.c
> request textDocument/definition @us
< result [{"uri": "$uri/a.c", "range": "@s..s2"}]
> request textDocument/definition @uf
< result [{"uri": "$uri/a.c", "range": "@f..f2"}]
> request textDocument/definition @ul
< result [{"uri": "$uri/a.c", "range": "@l..l2"}]
> request textDocument/definition @w
< result [{"uri": "$uri/a.c", "range": "@n..n2"}]
