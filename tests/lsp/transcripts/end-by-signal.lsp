> begin
> signal 15
< exit 1
