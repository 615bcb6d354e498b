# Where the next message begins is unknown: the server says so, and ends.
> begin
> bytes "Content-Length: many\r\n\r\n{}"
< notify window/logMessage {"type": 1, "message": "...Content-Length...ends"}
< exit 1
