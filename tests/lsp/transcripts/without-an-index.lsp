# Without an index the answers come from the text, what it includes, and tags files.
file inner.h
    int ‹d›inner‹d2›(int);
file outer.h
    #include "inner.h"
file far.c
    int ‹f›far_away‹f2›(void) { return 1; }
file some.tags
    !_TAG_FILE_FORMAT	2	/extended format/
    far_away	far.c	/^int far_away(void) { return 1; }$/;"	f
file a.c
    #include "outer.h"
    int x(void) { return ‹use›inner(‹use2›far_away()); }

run --no-index --tags some.tags
> begin
> open a.c
> request textDocument/definition @use
< result [{"uri": "$uri/inner.h", "range": "@d..d2"}]
> request textDocument/definition @use2
< result [{"uri": "$uri/far.c", "range": "@f..f2"}]
< none $/progress
