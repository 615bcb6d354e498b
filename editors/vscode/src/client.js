// The client of the protocol, as this extension wants it.
'use strict';

const { LanguageClient, RevealOutputChannelOn } = require('vscode-languageclient/node');
const { serverSettings } = require('./settings');

const kLanguages = ['c', 'cpp', 'objective-c', 'objective-cpp'];

// The methods that stand behind a word of the setting "disabledFeatures".
const kFeatures = {
    completion: ['textDocument/completion'],
    hover: ['textDocument/hover'],
    signatureHelp: ['textDocument/signatureHelp'],
    definition: ['textDocument/definition', 'textDocument/declaration', 'textDocument/implementation',
        'textDocument/typeDefinition'],
    references: ['textDocument/references'],
    highlight: ['textDocument/documentHighlight'],
    outline: ['textDocument/documentSymbol'],
    symbols: ['workspace/symbol'],
    folding: ['textDocument/foldingRange', 'textDocument/selectionRange'],
    hierarchies: ['textDocument/prepareCallHierarchy', 'textDocument/prepareTypeHierarchy'],
    rename: ['textDocument/rename'],
};

/**
 * The class of clients without the given methods: those that the user leaves to another extension, and the commands,
 * which would collide with ours. Ours exist before a server does.
 */
function clientWithout(methods) {
    const unwanted = new Set([...methods, 'workspace/executeCommand']);
    return class extends LanguageClient {
        registerFeature(feature) {
            if (!unwanted.has(feature.registrationType?.method))
                super.registerFeature(feature);
        }
    };
}

function middleware(onProgress) {
    return {
        // The status bar shows the work. The base class only has to learn that it ended.
        handleWorkDoneProgress(token, value, next) {
            onProgress(token, value);
            if (value.kind === 'end')
                next(token, value);
        },
        workspace: {
            configuration: (params, token, next) => params.items.map((item, index) =>
                item.section === 'wren' ? serverSettings() : next({ items: [params.items[index]] }, token)[0]),
        },
    };
}

/**
 * Makes a client of 'program'; the caller starts and disposes it.
 *
 * 'onProgress' gets a token and a value of $/progress.
 */
function makeClient(program, own, output, onProgress) {
    // Without a transport, as standard input and output are the only one: the base class would add an option for it.
    const server = { command: program, args: ['lsp', ...own.extraArguments] };
    const options = {
        documentSelector: kLanguages.flatMap(language => ['file', 'untitled'].map(scheme => ({ scheme, language }))),
        initializationOptions: () => serverSettings(),
        middleware: middleware(onProgress),
        outputChannel: output,
        revealOutputChannelOn: RevealOutputChannelOn.Never,
    };
    const Client = clientWithout(own.disabledFeatures.flatMap(word => kFeatures[word] ?? []));
    const client = new Client('wren', 'Wren', server, options);
    const changed = client.middleware.workspace;
    changed.didChangeConfiguration = () =>
        client.sendNotification('workspace/didChangeConfiguration', { settings: { wren: serverSettings() } });
    return client;
}

module.exports = { kFeatures, kLanguages, makeClient };
