'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { State, statusText } = require('../src/state');

function running(...messages) {
    const state = new State();
    state.enter('running', '1.2');
    messages.forEach(([token, value]) => state.progress(token, value));
    return state;
}

test('the status bar says in which phase the server is', () => {
    for (const [phase, text, isWarning] of [
        ['missing', '$(warning) Wren', true],
        ['starting', '$(sync~spin) Wren', false],
        ['running', 'Wren', false],
        ['stopped', '$(warning) Wren', true],
    ]) {
        const state = new State();
        state.enter(phase);
        assert.equal(state.shown().text, text, phase);
        assert.equal(state.shown().isWarning, isWarning, phase);
    }
});

test('work is shown with its percentage, and what it does in the tooltip', () => {
    const state = running(['a', { kind: 'begin', title: 'Indexing', percentage: 0 }],
        ['a', { kind: 'report', message: '12 of 40 files', percentage: 30 }]);
    assert.deepEqual(state.shown(),
        { text: '$(sync~spin) Wren 30%', tooltip: 'Wren 1.2\nIndexing: 12 of 40 files', isWarning: false });
});

test('a report without a percentage keeps the last one', () => {
    const state = running(['a', { kind: 'begin', title: 'Indexing', percentage: 5 }],
        ['a', { kind: 'report', message: 'more' }]);
    assert.equal(state.shown().text, '$(sync~spin) Wren 5%');
});

test('of several works the slowest counts', () => {
    const state = running(['a', { kind: 'begin', title: 'A', percentage: 80 }],
        [2, { kind: 'begin', title: 'B', percentage: 20 }]);
    assert.equal(state.shown().text, '$(sync~spin) Wren 20%');
    state.progress(2, { kind: 'end' });
    assert.equal(state.shown().text, '$(sync~spin) Wren 80%');
});

test('work that knows no percentage shows none', () => {
    assert.equal(running(['a', { kind: 'begin', title: 'A' }]).shown().text, '$(sync~spin) Wren');
});

test('after the last work the status bar is quiet', () => {
    const state = running(['a', { kind: 'begin', title: 'A', percentage: 80 }],
        ['a', { kind: 'end', message: 'done' }]);
    assert.deepEqual(state.shown(), { text: 'Wren', tooltip: 'Wren 1.2\nWren is ready.', isWarning: false });
    assert.equal(state.isWorking, false);
});

test('a server that stops takes its work with it', () => {
    const state = running(['a', { kind: 'begin', title: 'A', percentage: 80 }]);
    state.enter('stopped');
    assert.equal(state.shown().text, '$(warning) Wren');
    state.enter('running');
    assert.equal(state.shown().text, 'Wren');
});

test('the status is a line for each root', () => {
    const root = { root: '/p', files: 1234, symbols: 50000, size: 2_340_000, indexing: false, done: 0, total: 0 };
    const busy = { root: '/q', files: 0, symbols: 0, size: 900, indexing: true, done: 3, total: 9 };
    assert.equal(statusText({ roots: [root, busy] }),
        '/p: 1,234 files, 50,000 symbols, 2.3 MB\n/q: 0 files, 0 symbols, 1 kB, indexing 3 of 9');
    assert.equal(statusText({ roots: [] }), 'No folder is indexed.');
});
