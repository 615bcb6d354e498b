# A client that is not asked sends the settings itself.
file a.c
    int one(void) { return 1; }

> begin {"initializationOptions": {"index": false, "systemHeaders": false}}
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
> notify workspace/didChangeConfiguration {"settings": {"wren": {"index": true}}}
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "files": 1, "...": "..."}]}
> notify workspace/didChangeConfiguration {"settings": 5}
> notify workspace/didChangeConfiguration {"settings": {"wren": {"index": "yes"}}}
< notify window/logMessage {"type": 2, "message": "...'index'..."}
