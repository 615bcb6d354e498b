// The three commands. Each works without a server, too: then it starts one, or says why it cannot.
'use strict';

const vscode = require('vscode');
const { statusText } = require('./state');

/** The folder that a command is about: the one clicked on, else that of the text in front, else the only one. */
async function chosenFolder(clicked) {
    if (clicked instanceof vscode.Uri)
        return clicked;
    const text = vscode.window.activeTextEditor?.document.uri;
    const around = text && vscode.workspace.getWorkspaceFolder(text);
    if (around)
        return around.uri;
    const folders = vscode.workspace.workspaceFolders ?? [];
    if (folders.length > 1)
        return (await vscode.window.showWorkspaceFolderPick())?.uri;
    return folders[0]?.uri;
}

async function runningSession(session) {
    if (!session.isRunning)
        await session.restart();
    return session.isRunning;
}

/** Sends 'command' about a folder; undefined when there is none or the server refuses, which the user is then shown. */
async function ask(session, command, clicked) {
    if (!await runningSession(session))
        return undefined;
    const folder = await chosenFolder(clicked);
    if (folder === undefined) {
        vscode.window.showWarningMessage('Wren: open a folder first.');
        return undefined;
    }
    try {
        return { folder, answer: await session.execute(command, [folder.toString()]) };
    } catch (error) {
        vscode.window.showErrorMessage(`Wren: ${error.message}`);
        return undefined;
    }
}

async function index(session, clicked) {
    const asked = await ask(session, 'wren.index', clicked);
    if (asked)
        vscode.window.showInformationMessage(`Wren: the index of ${asked.folder.fsPath} is current.`);
}

async function tags(session, clicked) {
    const asked = await ask(session, 'wren.tags', clicked);
    if (asked)
        vscode.window.showInformationMessage(`Wren: wrote ${asked.answer}.`);
}

async function status(session) {
    if (!await runningSession(session))
        return;
    const cancel = 'Stop Indexing';
    const again = 'Index';
    const log = 'Show Log';
    const text = statusText(await session.execute('wren.status', []));
    const actions = [session.state.isWorking ? cancel : again, log];
    const chosen = await vscode.window.showInformationMessage(`Wren ${session.state.version}. ${text}`, ...actions);
    if (chosen === cancel)
        session.cancelWork();
    if (chosen === again)
        await index(session);
    if (chosen === log)
        session.output.show();
}

function registerCommands(context, session) {
    const commands = { 'wren.index': index, 'wren.tags': tags, 'wren.status': status };
    for (const [name, command] of Object.entries(commands))
        context.subscriptions.push(
            vscode.commands.registerCommand(name, clicked => command(session, clicked)));
}

module.exports = { registerCommands };
