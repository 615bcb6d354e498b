# What cannot be used is ignored as a notification, and nothing breaks. After the shutdown nothing is answered.
> begin
> notify $/cancelRequest {"id": 99}
> notify $/cancelRequest {"id": "x"}
> notify $/cancelRequest {}
> notify $/cancelRequest {"id": {"a": 1}}
> notify $/cancelRequest null
> notify textDocument/didOpen {}
> notify textDocument/didChange {}
> notify textDocument/didSave {}
> notify textDocument/didClose {}
> notify workspace/didChangeWatchedFiles {}
> notify workspace/didChangeWatchedFiles {"changes": [{"uri": "zzz", "type": 9}]}
> notify workspace/didChangeWorkspaceFolders {}
> notify workspace/didChangeConfiguration {}
> notify window/workDoneProgress/cancel {"token": 4}
> notify textDocument/willSave {}
> request initialize {}
< error -32600
> request workspace/symbol {"query": "zz"}
< result []
> request shutdown
< result null
> request workspace/symbol {"query": "zz"}
< error -32600
> request shutdown
< error -32600
> notify exit
< exit 0
