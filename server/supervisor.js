'use strict';
// Keeps the backend (index.js) running: starts it, and starts it again whenever it ends
// without being asked to, waiting a little longer after each quick failure (1 s, doubling to
// 30 s; back to 1 s once a run has lasted a minute). SIGTERM and SIGINT are passed on and end
// both. The running server's PID is kept in DATA/server.pid.

const { spawn } = require('child_process');
const fs = require('fs');
const path = require('path');

const FIRST_DELAY_MS = 1000;
const LONGEST_DELAY_MS = 30000;
const STABLE_MS = 60000;

const dataDir = process.env.VANTREL_DATA_DIR;
const pidFile = dataDir ? path.join(dataDir, 'server.pid') : null;
let child = null;
let stopping = false;
let delay = FIRST_DELAY_MS;

function log(message) {
  process.stdout.write(`[vantrel-supervisor] ${new Date().toISOString()} ${message}\n`);
}

function start() {
  const startedAt = Date.now();
  child = spawn(process.execPath, [path.join(__dirname, 'index.js')], { stdio: 'inherit', env: process.env });
  if (pidFile) {
    fs.writeFileSync(pidFile, `${child.pid}\n`, { mode: 0o600 });
  }
  child.on('exit', (code, signal) => {
    child = null;
    if (stopping) {
      process.exit(0);
    }
    delay = Date.now() - startedAt >= STABLE_MS ? FIRST_DELAY_MS : delay;
    log(`the backend ended (${signal || `exit code ${code}`}); starting it again in ${delay / 1000} s`);
    setTimeout(start, delay);
    delay = Math.min(delay * 2, LONGEST_DELAY_MS);
  });
}

function stop(signal) {
  stopping = true;
  if (!child) {
    process.exit(0);
  }
  child.kill(signal);
  setTimeout(() => {
    child?.kill('SIGKILL');
    process.exit(0);
  }, 5000).unref();
}

process.on('SIGTERM', () => stop('SIGTERM'));
process.on('SIGINT', () => stop('SIGINT'));
start();
