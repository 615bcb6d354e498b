# Folders come and go, with what is found in them.
file one/a.c
    int inOne(void) { return 1; }
file two/b.c
    int inTwo(void) { return 2; }

> begin {"rootUri": null, "workspaceFolders": [{"uri": "$uri/one", "name": "one"}]}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "in"}
< result [{"name": "inOne", "...": "..."}]
> notify workspace/didChangeWorkspaceFolders {"event": {"added": [{"uri": "$uri/two", "name": "two"}], "removed": []}}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root/one", "...": "..."}, {"root": "$root/two", "...": "..."}]}
> notify workspace/didChangeWorkspaceFolders {"event": {"added": [], "removed": [{"uri": "$uri/one", "name": "one"}]}}
> request workspace/symbol {"query": "in"}
< result [{"name": "inTwo", "...": "..."}]
> request workspace/executeCommand {"command": "wren.tags", "arguments": ["$uri/one"]}
< error -32602
