# While a text is open it stands over the file, whoever changes that. When it is closed, the file counts.
file a.c
    int typed(void) { return 1; }

> begin
> open a.c
> request workspace/executeCommand {"command": "wren.index"}
< result null
file a.c
    int written(void) { return 2; }
> notify workspace/didChangeWatchedFiles {"changes": [{"uri": "$uri/a.c", "type": 2}]}
> request workspace/executeCommand {"command": "wren.index", "arguments": ["$uri/a.c"]}
< result null
> request workspace/symbol {"query": "written"}
< result []
> request workspace/symbol {"query": "typed"}
< result [{"name": "typed", "...": "..."}]
> request textDocument/documentSymbol a.c
< result [{"name": "typed", "...": "..."}]
> notify textDocument/didClose a.c
> until workspace/symbol {"query": "written"}
< result [{"name": "written", "...": "..."}]
> request workspace/symbol {"query": "typed"}
< result []
