# The client may reach its folder through a link: files below it belong to the project all the same.
file project/a.h
    int ‹d›sum‹d2›(int, int);
file project/b.c
    int ‹f›sum‹f2›(int a, int b) { return a + b; }
link way project

> begin {"rootUri": "$uri/way"}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/way/c.c", "languageId": "c", "version": 1, "text": "int x = sum(1, 2);"}}
> request textDocument/definition {"textDocument": {"uri": "$uri/way/c.c"}, "position": {"line": 0, "character": 9}}
< result [{"uri": "...project/b.c", "range": "@f..f2"}]
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root/project", "files": 2, "...": "..."}]}
