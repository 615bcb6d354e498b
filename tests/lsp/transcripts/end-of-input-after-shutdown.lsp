> begin
> request shutdown
< result null
> close
< exit 0
