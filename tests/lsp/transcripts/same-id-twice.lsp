# The id of a request is free again once that is answered.
> begin
> body {"jsonrpc": "2.0", "id": "again", "method": "workspace/executeCommand", "params": {"command": "wren.status"}}
< result #"again" {"roots": "..."}
> body {"jsonrpc": "2.0", "id": "again", "method": "workspace/executeCommand", "params": {"command": "wren.status"}}
< result #"again" {"roots": "..."}
