# JSON that is nested without end is refused, and never costs the server its stack.
> begin
> request workspace/executeCommand {"command": "wren.status", "arguments": [[[[[[[[[[]]]]]]]]]]}
< error -32602
