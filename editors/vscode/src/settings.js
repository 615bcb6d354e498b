// The section "wren" of the settings: a part is the server's, the rest is this extension's own.
'use strict';

const vscode = require('vscode');

// A change of these starts the server again.
const kOwn = ['path', 'extraArguments', 'disabledFeatures'];
const kServers = ['tags', 'index', 'systemHeaders', 'completion.limit', 'completion.snippets', 'references.comments'];

/** What the server is given: it complains about settings that it does not know. */
function serverSettings() {
    const settings = {};
    const section = vscode.workspace.getConfiguration('wren');
    for (const name of kServers) {
        const value = section.get(name);
        if (value === undefined)
            continue;
        const words = name.split('.');
        const last = words.pop();
        const holder = words.reduce((outer, word) => (outer[word] ??= {}), settings);
        holder[last] = value;
    }
    return settings;
}

function ownSettings() {
    const section = vscode.workspace.getConfiguration('wren');
    return {
        path: section.get('path', 'wren'),
        extraArguments: section.get('extraArguments', []),
        disabledFeatures: section.get('disabledFeatures', []),
    };
}

/** Whether a change of the settings needs another server. */
function needsRestart(event) {
    return kOwn.some(name => event.affectsConfiguration(`wren.${name}`));
}

module.exports = { kOwn, kServers, needsRestart, ownSettings, serverSettings };
