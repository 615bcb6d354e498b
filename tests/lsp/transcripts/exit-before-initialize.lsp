> notify exit
< exit 1
