'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { test } = require('node:test');
const { findProgram } = require('../src/program');

function directory(t, ...programs) {
    const made = fs.mkdtempSync(path.join(os.tmpdir(), 'wren-program-'));
    t.after(() => fs.rmSync(made, { recursive: true }));
    programs.forEach(name => fs.writeFileSync(path.join(made, name), '', { mode: 0o755 }));
    return made;
}

test('a name is looked for in PATH, in order', t => {
    const first = directory(t);
    const second = directory(t, 'wren');
    const third = directory(t, 'wren');
    assert.equal(findProgram('wren', { PATH: [first, second, third].join(':') }), path.join(second, 'wren'));
    assert.equal(findProgram('', { PATH: second }), path.join(second, 'wren'));
});

test('a path is taken as it is, with ~ for the home directory', t => {
    const home = directory(t, 'my-wren');
    assert.equal(findProgram(path.join(home, 'my-wren'), { PATH: '' }), path.join(home, 'my-wren'));
    assert.equal(findProgram('~/my-wren', { PATH: '', HOME: home }), path.join(home, 'my-wren'));
});

test('what is no program is not found', t => {
    const home = directory(t);
    fs.writeFileSync(path.join(home, 'text'), '', { mode: 0o644 });
    fs.mkdirSync(path.join(home, 'wren'));
    assert.equal(findProgram(path.join(home, 'text'), {}), undefined);
    assert.equal(findProgram('wren', { PATH: home }), undefined);
    assert.equal(findProgram('wren', {}), undefined);
});

test('no program of the directory that happens to be current is run', t => {
    const here = process.cwd();
    process.chdir(directory(t, 'wren'));
    t.after(() => process.chdir(here));
    assert.equal(findProgram('wren', { PATH: ':.' }), undefined);
    assert.equal(findProgram('./wren', { PATH: '' }), undefined);
});
