// What the status bar says. Knows neither the editor nor the server.
'use strict';

const kPhases = {
    missing: { text: '$(warning) Wren', tooltip: 'The program wren is not installed, or not where the settings say.' },
    starting: { text: '$(sync~spin) Wren', tooltip: 'Wren is starting.' },
    running: { text: 'Wren', tooltip: 'Wren is ready.' },
    stopped: { text: '$(warning) Wren', tooltip: 'Wren has stopped.' },
};

/** The phase of the server, and the work that it reports, by token. */
class State {
    constructor() {
        this.phase = 'stopped';
        this.version = '';
        this.work = new Map();
    }

    enter(phase, version = '') {
        this.phase = phase;
        this.version = version;
        this.work.clear();
    }

    /** One message of $/progress. A report may leave out what has not changed. */
    progress(token, value) {
        if (value.kind === 'end')
            this.work.delete(token);
        else
            this.work.set(token, { ...this.work.get(token), ...value });
    }

    get isWorking() {
        return this.phase === 'running' && this.work.size > 0;
    }

    /** The text and the tooltip; whether the text stands out as a warning. */
    shown() {
        const { text, tooltip } = this.isWorking ? this.shownWork() : kPhases[this.phase];
        const title = this.version ? `Wren ${this.version}\n` : '';
        return { text, tooltip: title + tooltip, isWarning: this.phase === 'missing' || this.phase === 'stopped' };
    }

    shownWork() {
        const works = [...this.work.values()];
        const percentages = works.map(each => each.percentage).filter(each => each !== undefined);
        // Several works are done when the slowest is.
        const percentage = percentages.length ? ` ${Math.min(...percentages)}%` : '';
        const tooltip = works.map(each => [each.title, each.message].filter(Boolean).join(': ')).join('\n');
        return { text: `$(sync~spin) Wren${percentage}`, tooltip };
    }
}

function sizeText(bytes) {
    return bytes < 1e6 ? `${Math.ceil(bytes / 1e3)} kB` : `${(bytes / 1e6).toFixed(bytes < 1e7 ? 1 : 0)} MB`;
}

function rootText(root) {
    const [files, symbols] = [root.files, root.symbols].map(count => count.toLocaleString('en'));
    const work = root.indexing ? `, indexing ${root.done} of ${root.total}` : '';
    return `${root.root}: ${files} files, ${symbols} symbols, ${sizeText(root.size)}${work}`;
}

/** What the command "Status" says: the server's answer as sentences, a line for each root. */
function statusText(status) {
    const roots = status?.roots ?? [];
    return roots.length ? roots.map(rootText).join('\n') : 'No folder is indexed.';
}

module.exports = { State, statusText };
