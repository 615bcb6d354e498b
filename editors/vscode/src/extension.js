// What the editor calls.
'use strict';

const vscode = require('vscode');
const { registerCommands } = require('./commands');
const { Session } = require('./session');
const { needsRestart } = require('./settings');

let session;

async function activate(context) {
    session = new Session(context);
    registerCommands(context, session);
    context.subscriptions.push(vscode.workspace.onDidChangeConfiguration(event => {
        if (needsRestart(event))
            session.restart();
    }));
    await session.start();
    return { session };
}

function deactivate() {
    return session?.stop();
}

module.exports = { activate, deactivate };
