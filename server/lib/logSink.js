'use strict';
// Where Parse Server's own log lines go (its `loggerAdapter`). Parse Server logs a refused
// request with its error message and, for failing triggers and functions, with the request's
// input: people's addresses and telephone numbers, and text of any length chosen by the caller.
// Here each line keeps only the level and the message, with addresses and long numbers masked,
// cut to a few hundred bytes; warnings and errors only.

const fs = require('fs');
const path = require('path');

const MAX_MESSAGE = 240;
const LEVELS = new Set(['error', 'warn']);

// Masks e-mail addresses and telephone-like digit runs.
function redact(text) {
  return text
    .replace(/[^\s"'<>()[\]{}:,;]+@[^\s"'<>()[\]{}:,;]+/g, '[address]')
    .replace(/\+?\d[\d ()-]{4,}\d/g, '[number]');
}

function oneLine(message) {
  const text = typeof message === 'string' ? message : String(message?.message ?? message);
  const flat = redact(text.replace(/\s+/g, ' ').trim());
  return flat.length > MAX_MESSAGE ? `${flat.slice(0, MAX_MESSAGE)}…` : flat;
}

class LogSink {
  constructor({ logsFolder }) {
    fs.mkdirSync(logsFolder, { recursive: true, mode: 0o700 });
    this.file = path.join(logsFolder, 'parse-server.log');
  }

  log(level, message, meta) {
    if (!LEVELS.has(level)) {
      return;
    }
    // An Error passed as the second argument carries the useful part.
    const detail = meta && typeof meta.message === 'string' ? meta.message : '';
    const text = detail ? `${String(message).replace(/[:\s]+$/, '')}: ${detail}` : message;
    fs.appendFile(this.file, `${new Date().toISOString()} ${level} ${oneLine(text)}\n`,
      { mode: 0o600 }, () => {});
  }

  query(options, callback = () => {}) {
    callback([]);
    return Promise.resolve([]);
  }
}

module.exports = { LogSink, redact, oneLine };
