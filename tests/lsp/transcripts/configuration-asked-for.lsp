# The client's configuration counts over its initializationOptions. What is wrong in either is logged once.
by-hand workspace/configuration
file a.c
    int one(void) { return 1; }

> begin {"capabilities": {"workspace": {"configuration": true}, "window": {"workDoneProgress": true}},
    "initializationOptions": {"index": true, "colour": "red", "completion": {"limit": -1}}}
< notify window/logMessage {"type": 2, "message": "...'colour'..."}
< notify window/logMessage {"type": 2, "message": "...'completion.limit'..."}
< request workspace/configuration {"items": [{"section": "wren"}]}
> answer [{"index": false, "tags": 5}]
< notify window/logMessage {"type": 2, "message": "...'tags'..."}
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
< none window/workDoneProgress/create
< none window/logMessage {"type": 2, "message": "...'colour'..."}

# It asks again when something has changed.
> notify workspace/didChangeConfiguration {"settings": null}
< request workspace/configuration
> answer [{"index": true}]
< request window/workDoneProgress/create
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": [{"root": "$root", "...": "..."}]}
< none window/logMessage
