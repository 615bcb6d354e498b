// A stand-in for the module that the editor gives to extensions.
//
// It does what this extension and the client of the protocol need: it holds settings, folders and texts, keeps what is
// registered, and records what the user would be shown. A test answers questions with 'answers' and asks a registered
// provider as the editor would.
'use strict';

const { EventEmitter: Emitter } = require('node:events');
const fs = require('node:fs');
const path = require('node:path');
const { fileURLToPath, pathToFileURL } = require('node:url');

class Disposable {
    constructor(dispose) {
        this.disposeOnce = dispose;
    }

    static from(...all) {
        return new Disposable(() => all.forEach(each => each.dispose()));
    }

    dispose() {
        this.disposeOnce?.();
        this.disposeOnce = undefined;
    }
}

class EventEmitter {
    constructor() {
        this.emitter = new Emitter().setMaxListeners(0);
        this.event = (listener, self, disposables) => {
            const bound = self ? listener.bind(self) : listener;
            this.emitter.on('event', bound);
            const disposable = new Disposable(() => this.emitter.off('event', bound));
            disposables?.push(disposable);
            return disposable;
        };
    }

    fire(value) {
        this.emitter.emit('event', value);
    }

    dispose() {
        this.emitter.removeAllListeners();
    }
}

class CancellationTokenSource {
    constructor() {
        const cancelled = new EventEmitter();
        this.token = { isCancellationRequested: false, onCancellationRequested: cancelled.event };
        this.cancel = () => {
            this.token.isCancellationRequested = true;
            cancelled.fire();
        };
    }

    dispose() {}
}

class Uri {
    constructor(scheme, fsPath, text) {
        Object.assign(this, { scheme, authority: '', path: fsPath, query: '', fragment: '', fsPath, text });
    }

    static file(file) {
        return new Uri('file', file, pathToFileURL(file).href);
    }

    static parse(text) {
        return text.startsWith('file:') ? Uri.file(fileURLToPath(text)) : new Uri(text.split(':')[0], text, text);
    }

    static joinPath(uri, ...parts) {
        return Uri.file(path.join(uri.fsPath, ...parts));
    }

    toString() {
        return this.text;
    }
}

class Position {
    constructor(line, character) {
        Object.assign(this, { line, character });
    }
}

class Range {
    constructor(start, end, endLine, endCharacter) {
        this.start = start instanceof Position ? start : new Position(start, end);
        this.end = start instanceof Position ? end : new Position(endLine, endCharacter);
    }
}

/** A class whose constructor stores its arguments under these names. */
function record(...names) {
    return class {
        constructor(...values) {
            names.forEach((name, index) => { this[name] = values[index]; });
        }
    };
}

class MarkdownString {
    constructor(value = '') {
        this.value = value;
    }

    appendMarkdown(text) {
        this.value += text;
        return this;
    }

    appendCodeblock(text, language) {
        return this.appendMarkdown(`\n\`\`\`${language}\n${text}\n\`\`\`\n`);
    }
}

class CompletionItem extends record('label', 'kind') {}

class TextDocument {
    constructor(uri, languageId, text) {
        Object.assign(this, { uri, languageId, text, version: 1, isClosed: false, fileName: uri.fsPath });
    }

    getText() {
        return this.text;
    }

    get lineCount() {
        return this.text.split('\n').length;
    }

    /** The place of the mark '|' in a piece of the text, which is in the text without it. */
    at(piece) {
        const before = this.text.slice(0, this.text.indexOf(piece.replace('|', '')) + piece.indexOf('|')).split('\n');
        return new Position(before.length - 1, before.at(-1).length);
    }
}

const events = {};
for (const name of ['ChangeConfiguration', 'ChangeTextDocument', 'OpenTextDocument', 'CloseTextDocument',
    'SaveTextDocument', 'ChangeWorkspaceFolders'])
    events[name] = new EventEmitter();

// What a test sets and reads. 'answers' chooses a button of a message; the default closes it.
const host = {
    settings: {}, messages: [], executed: [], answers: () => undefined, providers: new Map(), commands: new Map(),
    output: '', items: [], events,
};

const watched = new Set(); // removed with the test's process

const workspace = {
    textDocuments: [], notebookDocuments: [], workspaceFolders: undefined, isTrusted: true,
    fs: { stat: async uri => ({ type: fs.statSync(uri.fsPath).isDirectory() ? 2 : 1 }) },
    getConfiguration: section => configuration(section),
    getWorkspaceFolder: uri => (workspace.workspaceFolders ?? []).find(each => uri.fsPath.startsWith(each.uri.fsPath)),
    createFileSystemWatcher: () => {
        const watcher = { dispose: () => watched.delete(watcher) };
        for (const name of ['onDidCreate', 'onDidChange', 'onDidDelete'])
            watcher[name] = new EventEmitter().event;
        watched.add(watcher);
        return watcher;
    },
    applyEdit: async () => true,
};

function configuration(section) {
    const all = host.settings;
    if (section === undefined)
        return { get: name => nested(name, all), has: name => nested(name, all) !== undefined };
    const key = name => `${section}.${name}`;
    return { get: (name, otherwise) => all[key(name)] ?? otherwise, has: name => key(name) in all };
}

/** The settings below 'section' as one object. */
function nested(section, all) {
    const found = {};
    for (const [name, value] of Object.entries(all))
        if (name.startsWith(`${section}.`)) {
            const words = name.slice(section.length + 1).split('.');
            const last = words.pop();
            words.reduce((outer, word) => (outer[word] ??= {}), found)[last] = value;
        }
    return found;
}

for (const name of Object.keys(events))
    workspace[`onDid${name}`] = events[name].event;
for (const name of ['onWillSaveTextDocument', 'onWillCreateFiles', 'onDidCreateFiles', 'onWillRenameFiles',
    'onDidRenameFiles', 'onWillDeleteFiles', 'onDidDeleteFiles', 'onDidOpenNotebookDocument',
    'onDidCloseNotebookDocument', 'onDidChangeNotebookDocument', 'onDidSaveNotebookDocument'])
    workspace[name] = new EventEmitter().event;

function show(kind) {
    return async (message, ...buttons) => {
        host.messages.push({ kind, message, buttons });
        return host.answers(message, buttons);
    };
}

const window = {
    activeTextEditor: undefined, visibleTextEditors: [],
    tabGroups: { all: [], onDidChangeTabs: new EventEmitter().event, onDidChangeTabGroups: new EventEmitter().event },
    onDidChangeActiveTextEditor: new EventEmitter().event,
    showErrorMessage: show('error'), showWarningMessage: show('warning'), showInformationMessage: show('information'),
    showWorkspaceFolderPick: async () => workspace.workspaceFolders.at(-1),
    withProgress: async (options, task) => task({ report: () => undefined }, new CancellationTokenSource().token),
    createOutputChannel: name => ({
        name, append: text => { host.output += text; }, appendLine: text => { host.output += `${text}\n`; },
        show: () => host.executed.push(['output', name]), dispose: () => undefined,
    }),
    createStatusBarItem: id => {
        const item = { id, show: () => { item.isShown = true; }, dispose: () => { item.isShown = false; } };
        host.items.push(item);
        return item;
    },
};

const commands = {
    registerCommand: (name, command) => {
        if (host.commands.has(name))
            throw new Error(`command '${name}' already exists`);
        host.commands.set(name, command);
        return new Disposable(() => host.commands.delete(name));
    },
    executeCommand: async (name, ...rest) => {
        host.executed.push([name, ...rest]);
        return host.commands.get(name)?.(...rest);
    },
};

// registerHoverProvider(selector, provider) is kept as "Hover"; that for symbols of the workspace has no selector.
const languages = new Proxy({
    match: (selector, document) => [selector].flat().some(each =>
        each.language === document.languageId && each.scheme === document.uri.scheme) ? 10 : 0,
    createDiagnosticCollection: () => ({ set: () => undefined, clear: () => undefined, dispose: () => undefined }),
}, {
    get: (known, name) => known[name] ?? ((...words) => {
        const what = /^register(.*?)(Item)?Provider$/.exec(name)[1];
        host.providers.set(what, words.find(each => Object.values(each).some(value => typeof value === 'function')));
        return new Disposable(() => host.providers.delete(what));
    }),
});

module.exports = {
    version: '1.82.0', host, workspace, window, commands, languages, env: { language: 'en', openExternal: () => true },
    Disposable, EventEmitter, CancellationTokenSource, Uri, Position, Range, MarkdownString, CompletionItem,
    TextDocument,
    CancellationError: class extends Error {},
    Location: record('uri', 'range'), Hover: record('contents', 'range'), SnippetString: record('value'),
    CompletionList: record('items', 'isIncomplete'), TextEdit: record('range', 'newText'),
    SymbolInformation: record('name', 'kind', 'containerName', 'location'), ThemeColor: record('id'),
    DocumentSymbol: record('name', 'detail', 'kind', 'range', 'selectionRange'),
    DocumentHighlight: record('range', 'kind'), FoldingRange: record('start', 'end', 'kind'),
    SelectionRange: record('range', 'parent'), DocumentLink: record('range'), InlayHint: record('position', 'label'),
    Diagnostic: record('range', 'message', 'severity'), CodeLens: record('range'), CodeAction: record('title', 'kind'),
    CallHierarchyItem: record('kind', 'name', 'detail', 'uri', 'range', 'selectionRange'),
    TypeHierarchyItem: record('kind', 'name', 'detail', 'uri', 'range', 'selectionRange'),
    SignatureHelp: record(), SignatureInformation: record('label'), ParameterInformation: record('label'),
    RelativePattern: record('baseUri', 'pattern'), WorkspaceEdit: record(), FileType: { File: 1, Directory: 2 },
    StatusBarAlignment: { Left: 1, Right: 2 }, ProgressLocation: { Window: 10 },
    SymbolKind: {}, SymbolTag: { Deprecated: 1 }, CompletionItemTag: { Deprecated: 1 }, CompletionItemKind: {},
    CompletionTriggerKind: { Invoke: 0 }, DocumentHighlightKind: { Text: 0, Read: 1, Write: 2 },
    DiagnosticSeverity: { Error: 0, Warning: 1, Information: 2, Hint: 3 }, DiagnosticTag: {},
    CodeActionKind: Object.assign(record('value'), { Empty: { append: value => ({ value }) } }),
    FoldingRangeKind: record('value'), TextDocumentSaveReason: {}, SignatureHelpTriggerKind: { Invoke: 1 },
};
