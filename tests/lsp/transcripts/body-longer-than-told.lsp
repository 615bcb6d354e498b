# What follows a body must be a header. Else the server does not know where it is: it says so, and ends.
> begin
> bytes "Content-Length: 2\r\n\r\n[]garbage without any colon\r\n\r\n"
< error #null -32600
< notify window/logMessage {"type": 1, "message": "...ends"}
< exit 1
