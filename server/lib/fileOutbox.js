'use strict';
// An append-only file of JSON lines, one per outgoing mail or notice, readable by the owner only.

const fs = require('fs');
const path = require('path');

class FileOutbox {
  constructor(file) {
    this.file = file;
    fs.mkdirSync(path.dirname(file), { recursive: true, mode: 0o700 });
  }

  append(entry) {
    const line = JSON.stringify({ date: new Date().toISOString(), ...entry }) + '\n';
    // Appends are atomic for lines this short; the mode only applies when the file is created.
    fs.appendFileSync(this.file, line, { mode: 0o600 });
    fs.chmodSync(this.file, 0o600);
  }
}

module.exports = { FileOutbox };
