'use strict';
// Sign-in names in any letter case, and the lockout. Accounts keep their user name and e-mail
// address as typed at registration (the deletion notice quotes it), and both are unique
// regardless of case; Parse Server compares them exactly. This middleware looks the typed name
// up without regard to case and hands Parse Server the stored spelling, for logins, password
// checks and password-reset requests.
//
// Every password check (a login or /verifyPassword, by GET or POST, the name in the body or
// the query string, read as Parse Server reads it) goes through the lockout first: a locked
// name is answered here, and Parse Server's answer settles the attempt. Unknown names go the
// same way after the same single look-up, and Parse Server checks their password against a
// stand-in hash, so neither the answers nor their timing tell whether an account exists.
// Reset requests are also limited per address here (Parse Server limits them per client).

const { WindowCounter } = require('./windowCounter');

const LOGIN_PATH = /^\/(login|verifyPassword)\/?$/i;
const RESET_PATH = /^\/requestPasswordReset\/?$/i;
const TOO_MANY_REQUESTS = 100; // Parse's code for a refused request of this kind (CONNECTION_FAILED)
const OBJECT_NOT_FOUND = 101; // Parse's code for a failed sign-in
const isName = (value) => typeof value === 'string' && value !== '';

function createLoginNames({ db, resetLimit, lockout }) {
  const resets = new WindowCounter({ windowMs: resetLimit.windowMs });
  const lockedAnswer = {
    code: OBJECT_NOT_FOUND,
    error: `Your account is locked due to multiple failed login attempts. Please try again after ${lockout.lockMinutes} minute(s)`,
  };

  const stored = async (typed) => {
    if (!isName(typed) || typed.length > 320) {
      return null;
    }
    const rows = await db.any(
      `SELECT username, email, lower(username) = lower($1) AS by_username FROM "_User"
        WHERE lower(username) = lower($1) OR lower(email) = lower($1) LIMIT 3`, [typed]);
    return rows.find((r) => r.by_username) || rows[0] || null;
  };

  // Writes the stored spelling into `fields`; answers the name the lockout counts under: the
  // account's user name when the name (or failing that the address) is known, else as typed.
  const resolveLogin = async (fields) => {
    const found = {};
    for (const key of ['username', 'email']) {
      found[key] = await stored(fields[key]);
      if (found[key]) {
        fields[key] = key === 'username' ? found[key].username : (found[key].email ?? fields[key]);
      }
    }
    const primary = isName(fields.username) ? 'username' : 'email';
    return isName(fields[primary]) ? (found[primary]?.username ?? fields[primary]) : null;
  };

  const signIn = async (req, res) => {
    // Parse Server reads the query string instead of the body when it names what the body lacks.
    const body = req.body && typeof req.body === 'object' ? req.body : {};
    const query = req.query || {};
    const fromQuery = Boolean((!body.username && query.username) || (!body.email && query.email));
    const fields = fromQuery ? { ...query } : body;
    const name = await resolveLogin(fields);
    if (fromQuery) {
      const params = new URLSearchParams(req.url.slice(req.url.indexOf('?') + 1));
      for (const key of ['username', 'email']) {
        if (isName(fields[key])) {
          params.set(key, fields[key]);
        }
      }
      req.url = `${req.path}?${params}`;
      req.originalUrl = req.url;
    }
    if (!name || !isName(fields.password)) {
      return false; // Parse Server refuses it without checking any password
    }
    const attempt = await lockout.begin(name);
    if (attempt.locked) {
      res.status(404).json(lockedAnswer);
      return true;
    }
    // An answer that never reached its caller counts as a failure.
    res.on('close', () => lockout.settle(attempt, !res.writableFinished || res.statusCode === 404).catch(() => {}));
    return false;
  };

  return async function loginNames(req, res, next) {
    try {
      if (LOGIN_PATH.test(req.path) && (req.method === 'GET' || req.method === 'POST')) {
        if (await signIn(req, res)) {
          return undefined;
        }
      } else if (RESET_PATH.test(req.path) && req.method === 'POST' && typeof req.body?.email === 'string') {
        const address = req.body.email.trim().toLowerCase();
        if (resets.hit(address) > resetLimit.count) {
          return res.status(429).json({
            code: TOO_MANY_REQUESTS,
            error: 'Too many password reset requests for this address: please try again later.',
          });
        }
        const account = await stored(req.body.email);
        if (account) {
          req.body.email = account.email ?? account.username;
        }
      }
    } catch (error) {
      return next(error);
    }
    return next();
  };
}

module.exports = { createLoginNames, LOGIN_PATH };
