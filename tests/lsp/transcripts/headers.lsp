# Headers come in any order and case, and may end in a bare line feed.
> begin
> bytes "content-type: application/vscode-jsonrpc; charset=utf-8\r\ncontent-LENGTH:  2\r\n\r\n[]"
< error #null -32600
> bytes "Content-Length: 3\nX-Other: 1\n\n[1]"
< error #null -32600
