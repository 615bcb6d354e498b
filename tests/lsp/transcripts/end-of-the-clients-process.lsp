# No process has the largest number, so the client is gone.
> begin {"processId": 4194304}
< exit 1
