# A local's mentions are those in its scope.
file a.c
    int f(int ‹p›count‹p2›)
    {
        int twice = ‹u›count‹u2› * 2;
        {
            int ‹i›count‹i2› = 3;
            twice += ‹j›count‹j2›;
        }
        return twice + ‹w›count‹w2›;
    }
    int count(void);
    int g(int n)
    {
        if (n)
            goto ‹g›done‹g2›;
        n++;
    ‹l›done‹l2›:
        return n;
    }

> begin
> open a.c
> request textDocument/references @u {"context": {"includeDeclaration": true}}
< result [{"uri": "$uri/a.c", "range": "@p..p2"}, {"uri": "$uri/a.c", "range": "@u..u2"}, {"uri": "$uri/a.c", "range": "@w..w2"}]
> request textDocument/references @j {"context": {"includeDeclaration": false}}
< result [{"uri": "$uri/a.c", "range": "@j..j2"}]
> request textDocument/references @g {"context": {"includeDeclaration": true}}
< result [{"uri": "$uri/a.c", "range": "@g..g2"}, {"uri": "$uri/a.c", "range": "@l..l2"}]
