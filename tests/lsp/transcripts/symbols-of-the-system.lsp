# A header of the system answers only while nothing of the project fits. The home directory is a project without an
# index, so that only the header that is included is read.
file a.c
    #include <libgen.h>
    char *name(char *path) { return ‹u›__xpg_basename(path); }

environment HOME $root
> begin {"initializationOptions": {"systemHeaders": true}}
> open a.c
> request textDocument/definition @u
< result [{"uri": "file:///usr/include/libgen.h", "range": "..."}]
> request workspace/symbol {"query": "xpg_base"}
< result [{"name": "__xpg_basename", "location": {"uri": "file:///usr/include/libgen.h", "range": "..."}, "...": "..."}]
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/b.c", "languageId": "c", "version": 1, "text": "int xpg_bases;\n"}}
> request workspace/symbol {"query": "xpg_base"}
< result [{"name": "xpg_bases", "location": {"uri": "$uri/b.c", "range": "..."}, "...": "..."}]
