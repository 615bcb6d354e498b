# None of these ends the server.
> begin
> body {"jsonrpc": "2.0", "id": 7,
< error #null -32700
> body []
< error #null -32600
> body [{"jsonrpc": "2.0", "id": 8, "method": "shutdown"}]
< error #null -32600
> body {"id": 9, "method": "shutdown"}
< error #9 -32600
> body {"jsonrpc": "2.0", "id": 1.5, "method": "shutdown"}
< error #null -32600
> body {"jsonrpc": "2.0", "id": null, "method": "shutdown"}
< error #null -32600
> body {"jsonrpc": "2.0", "id": {"a": 1}, "method": "shutdown"}
< error #null -32600
> body {"jsonrpc": "2.0", "id": 10, "method": 5}
< error #10 -32600
> body {"jsonrpc": "2.0", "id": 11}
< error #11 -32600
> body {"jsonrpc": "2.0"}
< error #null -32600
> body 5
< error #null -32600
> body {"jsonrpc": "2.0", "id": "a-text", "method": "no/such"}
< error #"a-text" -32601
> body {"jsonrpc": "2.0", "id": 12, "method": "textDocument/definition", "params": 5}
< error #12 -32602
> body {"jsonrpc": "2.0", "id": 13, "method": "textDocument/definition"}
< error #13 -32602 "...textDocument..."
> body {"jsonrpc": "2.0", "method": "textDocument/didOpen", "params": 5}
< notify window/logMessage
> body {"jsonrpc": "2.0", "id": 99, "result": null}
> body {"jsonrpc": "2.0", "method": "$/cancelRequest"}
> body {"jsonrpc": "2.0", "method": "$/cancelRequest", "params": {"id": 4711}}
