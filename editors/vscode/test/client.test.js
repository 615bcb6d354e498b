// The whole extension with the real client of the protocol and, in most tests, the real server: WREN_PROGRAM.
'use strict';

const { freshEditor, set, vscode, waitFor } = require('./host');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { activate, deactivate } = require('../src/extension');

const { host, workspace, Uri } = vscode;
const kHeader = '/* How far it is. */\nint Distance(int from, int to);\n';
const kText = '#include "far.h"\n\nint Twice(int number)\n{\n    return Distance(number, number * 2);\n}\n';
const kToken = { isCancellationRequested: false, onCancellationRequested: () => ({ dispose() {} }) };

const said = () => host.messages.map(each => `${each.kind}: ${each.message}`);
const item = () => host.items[0];

/** Opens a project of two files in an editor with the extension; stops it at the end of the test. */
async function open(t, prepare = () => undefined) {
    const { context, endings, folder } = freshEditor(t);
    fs.mkdirSync(path.join(folder, '.git'));
    fs.writeFileSync(path.join(folder, 'far.h'), kHeader);
    fs.writeFileSync(path.join(folder, 'near.c'), kText);
    process.env.XDG_CACHE_HOME = path.join(folder, '.cache');
    host.settings['wren.path'] = process.env.WREN_PROGRAM;
    host.settings['wren.systemHeaders'] = false;
    prepare(folder);
    const document = new vscode.TextDocument(Uri.file(path.join(folder, 'near.c')), 'c', kText);
    workspace.textDocuments = [document];
    vscode.window.activeTextEditor = { document };
    const { session } = await activate(context);
    endings.push(deactivate);
    return { context, folder, document, session };
}

/** Has 'note' called with every text that the status bar shows from now on. */
function watchItem(note) {
    const create = vscode.window.createStatusBarItem;
    vscode.window.createStatusBarItem = (...words) => {
        vscode.window.createStatusBarItem = create;
        return new Proxy(create(...words), {
            set: (target, name, value) => {
                if (name === 'text')
                    note(value);
                return Reflect.set(target, name, value);
            },
        });
    };
}

const provider = name => waitFor(`a provider of ${name}`, () => host.providers.get(name));

async function definition(document, piece) {
    const answered = await (await provider('Definition')).provideDefinition(document, document.at(piece), kToken);
    return (answered ?? []).map(each => each.targetUri?.fsPath ?? each.uri.fsPath);
}

test('a missing program is said, with the way to install it and the setting', async t => {
    await open(t, () => { host.settings['wren.path'] = 'no-such-program'; });
    assert.match(said()[0], /^error: Wren: there is no program "no-such-program"\. Install Wren, or set "wren\.path"/);
    assert.equal(item().text, '$(warning) Wren');
    assert.equal(item().isShown, true);
});

test('the buttons of that message lead to the README and to the setting', async t => {
    const { session } = await open(t, () => {
        host.settings['wren.path'] = 'no-such-program';
        host.answers = (message, buttons) => buttons[0];
    });
    host.answers = (message, buttons) => buttons[1];
    await session.restart();
    await waitFor('both', () => host.executed.length === 2);
    assert.equal(host.executed[0][0], 'markdown.showPreview');
    assert.equal(host.executed[0][1].fsPath, path.join(__dirname, '../README.md'));
    assert.ok(fs.existsSync(host.executed[0][1].fsPath));
    assert.deepEqual(host.executed[1], ['workbench.action.openSettings', 'wren.path']);
});

test('a program that is no server is said, and the state shows it', async t => {
    await open(t, folder => {
        const program = path.join(folder, 'too-old');
        fs.writeFileSync(program, '#!/bin/sh\necho "lsp is not a command" >&2\nexit 2\n', { mode: 0o755 });
        host.settings['wren.path'] = program;
    });
    assert.match(said()[0], /^error: Wren: .*too-old did not start as a language server: lsp is not a command$/);
    assert.equal(item().text, '$(warning) Wren');
    assert.match(host.output, /lsp is not a command/);
});

test('the program is found when the setting is corrected', async t => {
    const { document } = await open(t, () => { host.settings['wren.path'] = 'no-such-program'; });
    set('wren.path', process.env.WREN_PROGRAM);
    await waitFor('the definition', async () => (await definition(document, 'Dist|ance')).length > 0);
});

test('definition, hover, completion and symbols come from the server', async t => {
    const { document, folder } = await open(t);
    await waitFor('the definition', async () =>
        (await definition(document, 'Dist|ance')).includes(path.join(folder, 'far.h')));
    const hover = await (await provider('Hover')).provideHover(document, document.at('Dist|ance'), kToken);
    assert.match(JSON.stringify(hover.contents), /int Distance\(int from, int to\).*How far it is/s);
    const listed = await (await provider('Completion')).provideCompletionItems(document, document.at('Dist|ance'),
        kToken, { triggerKind: 0 });
    assert.ok((listed.items ?? listed).some(each => (each.label.label ?? each.label) === 'Distance'));
    const symbols = await waitFor('the symbols', async () => {
        const found = await (await provider('WorkspaceSymbol')).provideWorkspaceSymbols('Twi', kToken);
        return found?.length ? found : undefined;
    });
    assert.equal(symbols[0].name, 'Twice');
});

test('indexing is shown in the status bar until it is done, in no message', async t => {
    const texts = [];
    const { session } = await open(t, () => watchItem(text => texts.push(text)));
    await vscode.commands.executeCommand('wren.index');
    await waitFor('a percentage', () => texts.some(text => /^\$\(sync~spin\) Wren \d+%$/.test(text)));
    await waitFor('the end of the work', () => session.isRunning && !session.state.isWorking);
    assert.equal(item().text, 'Wren');
    assert.match(item().tooltip, /^Wren \d+\.\d+\.\d+\nWren is ready\.$/);
    const folder = workspace.workspaceFolders[0].uri.fsPath;
    assert.deepEqual(said(), [`information: Wren: the index of ${folder} is current.`]);
});

test('the tags file is written by its command only', async t => {
    const { folder } = await open(t);
    await vscode.commands.executeCommand('wren.index');
    assert.ok(!fs.existsSync(path.join(folder, 'tags')));
    await vscode.commands.executeCommand('wren.tags');
    assert.match(fs.readFileSync(path.join(folder, 'tags'), 'utf8'), /^Twice\tnear\.c\t/m);
    assert.match(said().at(-1), new RegExp(`^information: Wren: wrote ${path.join(folder, 'tags')}\\.$`));
});

test('the status names the folder and counts its files', async t => {
    const { folder } = await open(t);
    await vscode.commands.executeCommand('wren.index');
    await vscode.commands.executeCommand('wren.status');
    assert.match(said().at(-1), new RegExp(`^information: Wren \\d.*${folder}: 2 files, \\d+ symbols`));
});

test('features that are left to another extension are not registered', async t => {
    const { session } = await open(t, () => { host.settings['wren.disabledFeatures'] = ['hover', 'completion']; });
    await provider('Definition');
    assert.ok(session.isRunning);
    assert.deepEqual(['Hover', 'Completion', 'Reference'].map(name => host.providers.has(name)), [false, false, true]);
});

test('a setting reaches the running server', async t => {
    const { document } = await open(t);
    await vscode.commands.executeCommand('wren.index');
    const count = async () => {
        const completion = await provider('Completion');
        const listed = await completion.provideCompletionItems(document, document.at('|Distance'), kToken,
            { triggerKind: 0 });
        return (listed.items ?? listed).length;
    };
    assert.ok(await count() > 2);
    set('wren.completion.limit', 2);
    await waitFor('two completions', async () => await count() === 2);
});

test('a server that dies is started again', async t => {
    const { document, session } = await open(t);
    await waitFor('the server', () => session.isRunning);
    const first = session.client._serverProcess.pid;
    process.kill(first, 'SIGKILL');
    await waitFor('another one', () => session.isRunning && session.client._serverProcess?.pid !== first);
    await waitFor('the definition', async () => (await definition(document, 'Dist|ance')).length > 0);
});

test('no server is left behind', async t => {
    const { session } = await open(t);
    await waitFor('the server', () => session.isRunning);
    const server = session.client._serverProcess;
    await deactivate();
    await waitFor('its end', () => server.exitCode !== null || server.signalCode !== null);
    assert.deepEqual([server.exitCode, server.signalCode], [0, null]);
});
