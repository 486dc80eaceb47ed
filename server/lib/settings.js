'use strict';
// Reads the backend's settings from the environment that server/backend prepares.
// Every value has one name here, so index.js and cli.js agree on them.

const fs = require('fs');
const path = require('path');

const APP_ID = 'u8jzPde0IgxLd6GncfBAepfJBd0Kh8oOOL8dKLzd';
const CLIENT_KEY = 'ocJ2isAjIhKtJ0RlgLKOmxgJTeKdNnFRIBXuDL7D';

function required(env, name) {
  const value = env[name];
  if (!value) {
    throw new Error(`environment variable ${name} is not set (start the backend with server/backend start)`);
  }
  return value;
}

function port(env, name, fallback) {
  const text = env[name] || String(fallback);
  const value = Number(text);
  if (!Number.isInteger(value) || value < 1 || value > 65535) {
    throw new Error(`${name} must be a TCP port number, got "${text}"`);
  }
  return value;
}

function positiveInt(env, name, fallback) {
  const text = env[name] || String(fallback);
  const value = Number(text);
  if (!Number.isInteger(value) || value < 1) {
    throw new Error(`${name} must be a positive whole number, got "${text}"`);
  }
  return value;
}

// Reads a secret kept in a file of the data directory; secrets never travel on command lines.
function readSecret(file) {
  const value = fs.readFileSync(file, 'utf8').trim();
  if (value.length < 16) {
    throw new Error(`secret file ${file} is empty or too short`);
  }
  return value;
}

function load(env = process.env) {
  const dataDir = path.resolve(required(env, 'VANTREL_DATA_DIR'));
  const httpPort = port(env, 'VANTREL_PORT', 1337);
  const pgPort = port(env, 'VANTREL_PG_PORT', 5433);
  const origin = `http://127.0.0.1:${httpPort}`;
  return {
    appId: APP_ID,
    clientKey: CLIENT_KEY,
    dataDir,
    host: '127.0.0.1',
    port: httpPort,
    origin,
    serverURL: origin,
    siteURL: `${origin}/site/`,
    liveQueryURL: `ws://127.0.0.1:${httpPort}/`,
    masterKeyFile: path.join(dataDir, 'master.key'),
    databaseURI: () =>
      `postgres://vantrel:${encodeURIComponent(readSecret(path.join(dataDir, 'db.secret')))}` +
      `@127.0.0.1:${pgPort}/vantrel`,
    filesDir: path.join(dataDir, 'files'),
    logsDir: path.join(dataDir, 'logs'),
    mailOutbox: path.join(dataDir, 'outbox', 'mail.jsonl'),
    noticeOutbox: path.join(dataDir, 'outbox', 'notices.jsonl'),
    siteDir: path.join(__dirname, '..', 'site'),
    noticeRateLimit: positiveInt(env, 'VANTREL_NOTICE_RATE_LIMIT', 10),
    noticeRateWindowMs: positiveInt(env, 'VANTREL_NOTICE_RATE_WINDOW', 60) * 1000,
    sms: {
      url: env.VANTREL_SMS_GATEWAY_URL || '',
      token: env.VANTREL_SMS_GATEWAY_TOKEN || '',
      sender: env.VANTREL_SMS_SENDER || 'Vantrel',
    },
    sendgrid: {
      apiKey: env.SENDGRID_API_KEY || '',
      from: env.VANTREL_MAIL_FROM || 'no-reply@vantrel.example',
      url: env.SENDGRID_API_URL || 'https://api.sendgrid.com/v3/mail/send',
    },
  };
}

module.exports = { load, readSecret, APP_ID, CLIENT_KEY };
