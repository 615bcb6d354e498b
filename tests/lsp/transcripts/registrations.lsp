# What the client can register for, the server does, after "initialized".
> begin {"capabilities": {"workspace": {"workspaceFolders": true,
    "didChangeWatchedFiles": {"dynamicRegistration": true}, "didChangeConfiguration": {"dynamicRegistration": true}}}}
< request client/registerCapability {"registrations": [{"id": "...", "method": "workspace/didChangeWatchedFiles", "registerOptions": {"watchers": ["..."]}}]}
< request client/registerCapability {"registrations": [{"id": "...", "method": "workspace/didChangeConfiguration", "...": "..."}]}
< request client/registerCapability {"registrations": [{"id": "...", "method": "workspace/didChangeWorkspaceFolders"}]}
