# The declaration; on it, the definition; what has only one of both gives itself.
file a.c
    int ‹d›sum‹d2›(int);
    int ‹f›sum‹f2›(int a) { return a; }
    int ‹o›only‹o2›(void) { return ‹u›sum(1); }

> begin
> open a.c
> request textDocument/declaration @u
< result [{"uri": "$uri/a.c", "range": "@d..d2"}]
> request textDocument/declaration @f
< result [{"uri": "$uri/a.c", "range": "@d..d2"}]
> request textDocument/declaration @d
< result [{"uri": "$uri/a.c", "range": "@f..f2"}]
> request textDocument/definition @d
< result [{"uri": "$uri/a.c", "range": "@f..f2"}]
> request textDocument/definition @o
< result [{"uri": "$uri/a.c", "range": "@o..o2"}]
> request textDocument/declaration @o
< result [{"uri": "$uri/a.c", "range": "@o..o2"}]
