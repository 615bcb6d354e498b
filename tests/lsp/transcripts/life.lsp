# From the first message to the last.
> request textDocument/definition {}
< error -32002
> notify textDocument/didOpen {}
> request initialize {"processId": null, "rootUri": "$uri", "capabilities": {},
    "initializationOptions": {"systemHeaders": false}}
< result {"capabilities": "...", "serverInfo": {"name": "wren", "version": "..."}}
> notify initialized {}
> request initialize {}
< error -32600 "...already..."
> request no/such {}
< error -32601 "...no/such..."
> request $/optional {}
< error -32601
> notify no/such {}
> notify $/optional {}
> request shutdown
< result null
> request textDocument/hover {}
< error -32600
> notify exit
< exit 0
