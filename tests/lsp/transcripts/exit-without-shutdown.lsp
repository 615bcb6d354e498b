> begin
> notify exit
< exit 1
