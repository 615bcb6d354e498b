'use strict';

const { freshEditor, vscode } = require('./host');
const assert = require('node:assert/strict');
const { test } = require('node:test');
const { registerCommands } = require('../src/commands');
const { State } = require('../src/state');
const manifest = require('../package.json');

const { host, workspace, Uri } = vscode;

/** A session whose server gives 'answers' by command; an Error is a refusal. */
function session(answers, canStart = true) {
    const made = {
        state: new State(), isRunning: false, sent: [], output: { show: () => host.executed.push('log') },
        restart: async () => { made.isRunning = canStart; },
        cancelWork: () => made.sent.push('cancel'),
        execute: async (command, words) => {
            made.sent.push([command, ...words]);
            if (answers[command] instanceof Error)
                throw answers[command];
            return answers[command];
        },
    };
    return made;
}

function setUp(t, ...words) {
    const { context } = freshEditor(t);
    const made = session(...words);
    registerCommands(context, made);
    return made;
}

const said = () => host.messages.map(each => `${each.kind}: ${each.message}`);
const folder = () => workspace.workspaceFolders[0].uri;

test('the commands of the palette are those that are registered', t => {
    setUp(t, {});
    assert.deepEqual([...host.commands.keys()].sort(), manifest.contributes.commands.map(each => each.command).sort());
});

test('Index starts the server when it does not run, and says when the index is current', async t => {
    const made = setUp(t, { 'wren.index': null });
    await vscode.commands.executeCommand('wren.index');
    assert.deepEqual(made.sent, [['wren.index', folder().toString()]]);
    assert.deepEqual(said(), [`information: Wren: the index of ${folder().fsPath} is current.`]);
});

test('Index takes the folder that was clicked on', async t => {
    const made = setUp(t, { 'wren.index': null });
    await vscode.commands.executeCommand('wren.index', Uri.file('/some/where'));
    assert.deepEqual(made.sent, [['wren.index', 'file:///some/where']]);
});

test('among several folders that of the text in front is meant, and without a text the user is asked', async t => {
    const made = setUp(t, { 'wren.index': null });
    workspace.workspaceFolders = ['/a', '/b', '/c'].map(name => ({ name, uri: Uri.file(name) }));
    vscode.window.activeTextEditor = { document: { uri: Uri.file('/b/x.c') } };
    await vscode.commands.executeCommand('wren.index');
    vscode.window.activeTextEditor = undefined;
    await vscode.commands.executeCommand('wren.index');
    assert.deepEqual(made.sent.map(each => each[1]), ['file:///b', 'file:///c']);
});

test('without a folder the user is asked to open one', async t => {
    const made = setUp(t, {});
    workspace.workspaceFolders = undefined;
    await vscode.commands.executeCommand('wren.tags');
    assert.deepEqual(made.sent, []);
    assert.deepEqual(said(), ['warning: Wren: open a folder first.']);
});

test('Write the tags file says where it is', async t => {
    setUp(t, { 'wren.tags': '/p/tags' });
    await vscode.commands.executeCommand('wren.tags');
    assert.deepEqual(said(), ['information: Wren: wrote /p/tags.']);
});

test('a refusal is shown', async t => {
    setUp(t, { 'wren.tags': new Error('/p/tags cannot be written') });
    await vscode.commands.executeCommand('wren.tags');
    assert.deepEqual(said(), ['error: Wren: /p/tags cannot be written']);
});

test('Status says what is indexed, and can index or show the log', async t => {
    const root = { root: '/p', files: 1, symbols: 2, size: 3000, indexing: false, done: 0, total: 0 };
    const made = setUp(t, { 'wren.status': { roots: [root] }, 'wren.index': null });
    made.state.enter('running', '1.2');
    host.answers = (message, buttons) => buttons[0];
    await vscode.commands.executeCommand('wren.status');
    assert.equal(host.messages[0].message, 'Wren 1.2. /p: 1 files, 2 symbols, 3 kB');
    assert.deepEqual(host.messages[0].buttons, ['Index', 'Show Log']);
    assert.deepEqual(made.sent.map(each => each[0]), ['wren.status', 'wren.index']);
    host.answers = (message, buttons) => buttons[1];
    await vscode.commands.executeCommand('wren.status');
    assert.deepEqual(host.executed.at(-1), 'log');
});

test('Status can stop the work that goes on', async t => {
    const made = setUp(t, { 'wren.status': { roots: [] } });
    made.state.enter('running');
    made.state.progress('a', { kind: 'begin', title: 'Indexing' });
    host.answers = (message, buttons) => buttons[0];
    await vscode.commands.executeCommand('wren.status');
    assert.deepEqual(host.messages[0].buttons[0], 'Stop Indexing');
    assert.deepEqual(made.sent.at(-1), 'cancel');
});

test('without a program the commands say nothing more than the start did', async t => {
    const made = setUp(t, {}, false);
    for (const name of host.commands.keys())
        await vscode.commands.executeCommand(name);
    assert.deepEqual([made.sent, said()], [[], []]);
});
