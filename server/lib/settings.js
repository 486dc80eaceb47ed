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

function wholeNumber(env, name, fallback, { min = 1, max = Number.MAX_SAFE_INTEGER } = {}) {
  const text = env[name] || String(fallback);
  const value = Number(text);
  if (!Number.isInteger(value) || value < min || value > max) {
    throw new Error(`${name} must be a whole number from ${min} to ${max}, got "${text}"`);
  }
  return value;
}

const port = (env, name, fallback) => wholeNumber(env, name, fallback, { max: 65535 });

// Reads a secret kept in a file of the data directory; secrets never travel on command lines.
function readSecret(file) {
  const value = fs.readFileSync(file, 'utf8').trim();
  if (value.length < 16) {
    throw new Error(`secret file ${file} is empty or too short`);
  }
  return value;
}

// A limit of `count` requests per `window` seconds, read from VANTREL_<NAME>_LIMIT and
// VANTREL_<NAME>_WINDOW.
function rate(env, name, count, windowSeconds) {
  return {
    count: wholeNumber(env, `VANTREL_${name}_LIMIT`, count),
    windowMs: wholeNumber(env, `VANTREL_${name}_WINDOW`, windowSeconds) * 1000,
  };
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
    administratorEmail: env.VANTREL_ADMIN_EMAIL || 'admin@vantrel.example',
    limits: {
      // Per client address.
      login: rate(env, 'LOGIN_RATE', 30, 60),
      signUp: rate(env, 'SIGNUP_RATE', 10, 60),
      passwordReset: rate(env, 'RESET_RATE', 5, 60),
      // Per e-mail address asked for.
      passwordResetPerAddress: rate(env, 'RESET_ADDRESS_RATE', 3, 3600),
      // Per account and function, and for the whole server.
      notice: rate(env, 'NOTICE_RATE', 10, 60),
      noticeGlobal: rate(env, 'NOTICE_GLOBAL_RATE', 300, 60),
      noticesPerDay: wholeNumber(env, 'VANTREL_NOTICE_DAILY_CAP', 100),
      // Failed password checks of one name within a rolling window lock it for a while.
      lockoutThreshold: wholeNumber(env, 'VANTREL_LOCKOUT_THRESHOLD', 5, { max: 999 }),
      lockoutWindowMs: wholeNumber(env, 'VANTREL_LOCKOUT_WINDOW', 15 * 60, { max: 7 * 24 * 3600 }) * 1000,
      lockoutMinutes: wholeNumber(env, 'VANTREL_LOCKOUT_MINUTES', 15, { max: 99999 }),
      uploadBytes: wholeNumber(env, 'VANTREL_UPLOAD_MAX_BYTES', 10 * 1024 * 1024),
      uploadBytesPerDay: wholeNumber(env, 'VANTREL_UPLOAD_DAILY_BYTES', 100 * 1024 * 1024),
      replayDays: wholeNumber(env, 'VANTREL_REPLAY_DAYS', 7),
      replayBytes: wholeNumber(env, 'VANTREL_REPLAY_MAX_BYTES', 64 * 1024 * 1024),
    },
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
