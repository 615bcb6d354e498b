'use strict';

const { freshEditor, set, vscode } = require('./host');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { kOwn, kServers, needsRestart, ownSettings, serverSettings } = require('../src/settings');
const manifest = require('../package.json');
const lock = require('../package-lock.json');

const kRoot = path.join(__dirname, '../../..');
const kProperties = manifest.contributes.configuration.properties;

test('the version is that of the program', () => {
    const project = fs.readFileSync(path.join(kRoot, 'CMakeLists.txt'), 'utf8');
    assert.equal(manifest.version, /project\(Wren VERSION (\S+)/.exec(project)[1]);
    assert.equal(lock.version, manifest.version);
});

test('the licence is that of the project', () => {
    assert.equal(fs.readFileSync(path.join(kRoot, 'LICENSE'), 'utf8').split('\n')[0], `${manifest.license} License`);
});

test('every setting is described, and read by the extension, by the server, or by the client of the protocol', () => {
    const read = [...kOwn, ...kServers, 'trace.server'].map(name => `wren.${name}`).sort();
    assert.deepEqual(Object.keys(kProperties).sort(), read);
    for (const [name, property] of Object.entries(kProperties))
        assert.match(property.markdownDescription, /\w.*\.$/, name);
});

test('without a change of the settings, the server gets its own defaults', t => {
    freshEditor(t);
    assert.deepEqual(serverSettings(), {
        tags: [], index: true, systemHeaders: true, completion: { limit: 100, snippets: true },
        references: { comments: false },
    });
});

test('the server gets what the user set, and nothing that it does not know', t => {
    freshEditor(t);
    set('wren.completion.limit', 7);
    set('wren.tags', ['more.tags']);
    set('wren.path', '/opt/wren');
    assert.equal(serverSettings().completion.limit, 7);
    assert.deepEqual(serverSettings().tags, ['more.tags']);
    assert.deepEqual(Object.keys(serverSettings()).filter(name => kOwn.includes(name)), []);
    assert.equal(ownSettings().path, '/opt/wren');
});

test('only a change of what the server is started with needs another one', t => {
    freshEditor(t);
    const needing = [];
    vscode.workspace.onDidChangeConfiguration(event => needing.push(needsRestart(event)));
    set('wren.path', 'other');
    set('wren.tags', []);
    set('editor.fontSize', 12);
    assert.deepEqual(needing, [true, false, false]);
});

test('a folder that somebody sent cannot choose the program', () => {
    for (const name of ['wren.path', 'wren.extraArguments'])
        assert.equal(kProperties[name].scope, 'machine', name);
});
