# Tags files of the settings are relative to the root. The index counts more than tags of the same place.
file a.c
    int ‹u›far_away;
    int ‹f›near‹f2›(void) { return 1; }
    int x(void) { return ‹n›near() + ‹v›far_away_function(); }
file other/far.c
    int filler;
    int ‹d›far_away_function‹d2›(void) { return 1; }
file lists/some.tags
    !_TAG_FILE_FORMAT	2	/extended format/
    far_away_function	../other/far.c	/^int far_away_function(void) { return 1; }$/;"	f
    near	../a.c	2;"	v

> begin {"initializationOptions": {"systemHeaders": false, "tags": ["lists/some.tags"]}}
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/definition @v
< result [{"uri": "$uri/other/far.c", "range": "@d..d2"}]
> request textDocument/definition @n
< result [{"uri": "$uri/a.c", "range": "@f..f2"}]
> request workspace/symbol {"query": "near"}
< result [{"name": "near", "kind": 12, "...": "..."}]
