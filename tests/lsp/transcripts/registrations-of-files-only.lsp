# A client that takes the registration for files may warn its user of any other one.
> begin {"capabilities": {"workspace": {"workspaceFolders": true, "didChangeWatchedFiles": {"dynamicRegistration": true}}}}
< request client/registerCapability {"registrations": [{"id": "...", "method": "workspace/didChangeWatchedFiles", "...": "..."}]}
> request workspace/executeCommand {"command": "wren.index"}
< result null
< none client/registerCapability
