# A client that is gone ends the server.
> begin
> close
< exit 1
