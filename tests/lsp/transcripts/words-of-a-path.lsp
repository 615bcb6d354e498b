# "Outer::na" narrows by the end of the scope, "dir/na" by any part of the path.
file one/a.cpp
    struct Outer { int narrow; };
    struct Inner { int narrow; };
file two/b.cpp
    int narrowest;

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "Outer::na"}
< result [{"name": "narrow", "containerName": "Outer", "...": "..."}]
> request workspace/symbol {"query": "two/na"}
< result [{"name": "narrowest", "...": "..."}]
> request workspace/symbol {"query": "Na"}
< result []
