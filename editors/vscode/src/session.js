// One server at a time, and what the status bar says about it.
'use strict';

const fs = require('fs');
const vscode = require('vscode');
const { State: ClientState } = require('vscode-languageclient/node');
const { makeClient } = require('./client');
const { findProgram, whyNoServer } = require('./program');
const { ownSettings } = require('./settings');
const { State } = require('./state');

class Session {
    /** 'context' owns what this makes for the editor. The server lives from start() to stop(). */
    constructor(context) {
        this.extensionUri = context.extensionUri;
        this.state = new State();
        this.client = undefined;
        this.turn = Promise.resolve();
        this.output = vscode.window.createOutputChannel('Wren');
        this.item = vscode.window.createStatusBarItem('wren', vscode.StatusBarAlignment.Right, 10);
        this.item.name = 'Wren';
        this.item.command = 'wren.status';
        context.subscriptions.push(this.output, this.item);
        this.show();
        this.item.show();
    }

    start() {
        return this.inTurn(() => this.startNow());
    }

    stop() {
        return this.inTurn(() => this.stopNow());
    }

    restart() {
        return this.inTurn(async () => {
            await this.stopNow();
            await this.startNow();
        });
    }

    get isRunning() {
        return this.client !== undefined && this.state.phase === 'running';
    }

    /** Sends one of the server's commands; its answer. */
    execute(command, args) {
        return this.client.sendRequest('workspace/executeCommand', { command, arguments: args });
    }

    /** Ends the work that the status bar shows; the server keeps what it has. */
    cancelWork() {
        for (const token of this.state.work.keys())
            this.client.sendNotification('window/workDoneProgress/cancel', { token });
    }

    // Starts and stops follow each other: a setting may change while a server starts.
    inTurn(step) {
        this.turn = this.turn.then(step, step);
        return this.turn;
    }

    async startNow() {
        const own = ownSettings();
        const program = findProgram(own.path);
        if (program === undefined) {
            this.enter('missing');
            this.sayMissing(own.path);
            return;
        }
        this.enter('starting');
        const reason = await whyNoServer(program);
        if (reason !== undefined)
            this.fail(program, reason);
        else
            await this.startServer(program, own);
    }

    async startServer(program, own) {
        const client = makeClient(program, own, this.output, (token, value) => this.progress(token, value));
        this.client = client;
        client.onDidChangeState(({ newState }) => this.follow(client, newState));
        try {
            await client.start();
        } catch (error) {
            this.fail(program, error.message ?? error);
        }
    }

    async stopNow() {
        const client = this.client;
        this.client = undefined;
        this.enter('stopped');
        // A client that did not start cannot be stopped.
        await client?.dispose().catch(error => this.output.appendLine(`Stopping failed: ${error.message ?? error}`));
    }

    follow(client, newState) {
        if (client !== this.client)
            return;
        const phases = {
            [ClientState.Starting]: 'starting',
            [ClientState.Running]: 'running',
            [ClientState.Stopped]: 'stopped',
        };
        this.enter(phases[newState], client.initializeResult?.serverInfo?.version);
    }

    progress(token, value) {
        this.state.progress(token, value);
        this.show();
    }

    enter(phase, version) {
        this.state.enter(phase, version);
        this.show();
    }

    show() {
        const { text, tooltip, isWarning } = this.state.shown();
        this.item.text = text;
        this.item.tooltip = tooltip;
        this.item.backgroundColor = isWarning ? new vscode.ThemeColor('statusBarItem.warningBackground') : undefined;
    }

    fail(program, reason) {
        this.enter('stopped');
        this.output.appendLine(`${program}: ${reason}`);
        this.sayFailed(program, reason);
    }

    /** Not awaited: it lasts until the user answers. */
    async sayMissing(setting) {
        const how = 'How to Install';
        const settings = 'Open Settings';
        const chosen = await vscode.window.showErrorMessage(
            `Wren: there is no program "${setting}". Install Wren, or set "wren.path" to where it is.`, how, settings);
        if (chosen === how)
            await vscode.commands.executeCommand('markdown.showPreview', this.readme());
        if (chosen === settings)
            await vscode.commands.executeCommand('workbench.action.openSettings', 'wren.path');
    }

    // The packer of extensions gives it a name in small letters.
    readme() {
        const candidates = ['readme.md', 'README.md'].map(name => vscode.Uri.joinPath(this.extensionUri, name));
        return candidates.find(each => fs.existsSync(each.fsPath));
    }

    async sayFailed(program, reason) {
        const log = 'Show Log';
        const chosen = await vscode.window.showErrorMessage(
            `Wren: ${program} did not start as a language server: ${reason}`, log);
        if (chosen === log)
            this.output.show();
    }
}

module.exports = { Session };
