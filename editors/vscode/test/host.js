// Requiring this first gives the module "vscode" to everything that is required later.
'use strict';

const Module = require('node:module');

const resolve = Module._resolveFilename;
Module._resolveFilename = function (name, ...rest) {
    return name === 'vscode' ? require.resolve('./vscode') : resolve.call(this, name, ...rest);
};

const vscode = require('./vscode');
const { mkdtempSync, rmSync } = require('node:fs');
const { tmpdir } = require('node:os');
const path = require('node:path');
const properties = require('../package.json').contributes.configuration.properties;

const kPatience = 60_000; // milliseconds; far more than any step takes on a busy machine

/** Waits until 'condition' holds; fails with 'what' when it never does. */
async function waitFor(what, condition) {
    const end = Date.now() + kPatience;
    for (;;) {
        const found = await condition();
        if (found)
            return found;
        if (Date.now() > end)
            throw new Error(`waited in vain for ${what}`);
        await new Promise(resume => setTimeout(resume, 10));
    }
}

/** Changes a setting as a user does. */
function set(name, value) {
    vscode.host.settings[name] = value;
    const isSameOrInner = (inner, outer) => inner === outer || inner.startsWith(`${outer}.`);
    vscode.host.events.ChangeConfiguration.fire({ affectsConfiguration: section => isSameOrInner(name, section) });
}

/**
 * A fresh editor with the settings of package.json and an open folder. At the test's end what was pushed to 'endings'
 * is done, the last one first, and then the folder is removed: a server may be writing to it until it has ended.
 */
function freshEditor(test) {
    const { host, workspace, Uri } = vscode;
    const folder = mkdtempSync(path.join(tmpdir(), 'wren-vscode-'));
    const context = { subscriptions: [], extensionUri: Uri.file(path.dirname(__dirname)) };
    const endings = [() => context.subscriptions.forEach(each => each.dispose())];
    test.after(async () => {
        try {
            while (endings.length > 0)
                await endings.pop()();
        } finally {
            rmSync(folder, { recursive: true, force: true, maxRetries: 50, retryDelay: 20 });
        }
    });
    Object.assign(host, { messages: [], executed: [], output: '', items: [], answers: () => undefined });
    host.providers.clear();
    host.commands.clear();
    host.settings = Object.fromEntries(Object.entries(properties).map(([name, { default: value }]) => [name, value]));
    workspace.textDocuments = [];
    workspace.workspaceFolders = [{ uri: Uri.file(folder), name: 'folder', index: 0 }];
    vscode.window.activeTextEditor = undefined;
    return { context, endings, folder };
}

module.exports = { freshEditor, set, vscode, waitFor };
