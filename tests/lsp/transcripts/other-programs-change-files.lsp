# What other programs write is found without a word of the client.
file a.c
    int one(void) { return 1; }

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
file b.c
    int another(void) { return 2; }
> until workspace/symbol {"query": "another"}
< result [{"name": "another", "...": "..."}]
delete b.c
> until workspace/symbol {"query": "another"}
< result []
# The client's word is as good.
file c.c
    int third(void) { return 3; }
> notify workspace/didChangeWatchedFiles {"changes": [{"uri": "$uri/c.c", "type": 1}]}
> until workspace/symbol {"query": "third"}
< result [{"name": "third", "...": "..."}]
