// Finds the program on this machine.
'use strict';

const { execFile } = require('child_process');
const fs = require('fs');
const os = require('os');
const path = require('path');

function isProgram(file) {
    try {
        fs.accessSync(file, fs.constants.X_OK);
        return fs.statSync(file).isFile();
    } catch {
        return false;
    }
}

/**
 * The absolute path of the program that the setting names; undefined when there is none.
 *
 * Relative directories of PATH are skipped: they would find a program of the folder that is open.
 */
function findProgram(setting, environment = process.env) {
    const named = (setting || 'wren').replace(/^~(?=\/|$)/, environment.HOME || os.homedir());
    const candidates = named.includes('/')
        ? [named]
        : (environment.PATH || '').split(path.delimiter).map(directory => path.join(directory, named));
    return candidates.find(file => path.isAbsolute(file) && isProgram(file));
}

/**
 * Why 'program' cannot be a server; undefined when it can.
 *
 * The client of the protocol says only that a pipe is broken when its program ends at once.
 */
function whyNoServer(program) {
    return new Promise(resolve => execFile(program, ['lsp', '--help'], { timeout: 10_000 }, (error, output, errors) =>
        resolve(error ? errors.trim().split('\n')[0] || error.message : undefined)));
}

module.exports = { findProgram, whyNoServer };
