> begin
> bytes "Content-Length: 67108865\r\n\r\n{}"
< notify window/logMessage {"type": 1, "message": "...67108865..."}
< exit 1
