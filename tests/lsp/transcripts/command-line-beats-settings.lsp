# What the command line says cannot be turned on again.
run --no-index
file a.c
    int one(void) { return 1; }

> begin {"initializationOptions": {"index": true, "systemHeaders": false}}
> notify workspace/didChangeConfiguration {"settings": {"wren": {"index": true}}}
> request workspace/executeCommand {"command": "wren.status"}
< result {"roots": []}
