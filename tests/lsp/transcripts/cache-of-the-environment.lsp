# XDG_CACHE_HOME beats the home directory: what it names is no directory here, so the
# index is in memory only.
file cache
    no directory
file a.c
    int one(void) { return 1; }
environment XDG_CACHE_HOME $root/cache

> begin
< notify window/logMessage {"type": 2, "message": "...in memory...$root/cache/..."}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "one"}
< result [{"name": "one", "...": "..."}]
