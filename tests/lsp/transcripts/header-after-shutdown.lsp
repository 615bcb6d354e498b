# Behind the shutdown, a client that sends no more sense is one that is gone.
> begin
> request shutdown
< result null
> bytes "Content-Length: many\r\n\r\n{}"
< exit 0
