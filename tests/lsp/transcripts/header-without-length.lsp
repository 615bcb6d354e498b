> begin
> bytes "Content-Type: x\r\n\r\n{}"
< notify window/logMessage {"type": 1, "message": "..."}
< exit 1
