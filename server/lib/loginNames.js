'use strict';
// Sign-in names in any letter case. Accounts keep their user name and e-mail address as typed
// at registration (the deletion notice quotes it), and both are unique regardless of case;
// Parse Server compares them exactly. This middleware looks the typed name up without regard
// to case and hands Parse Server the stored spelling, for logins (also inside /batch), password
// checks and password-reset requests.
//
// It answers nothing itself: an unknown name goes on as typed and gets Parse Server's usual
// "Invalid username/password." after the same single look-up, so it tells nobody whether an
// account exists; and every spelling of a name counts towards the lockout of the one account.
// Reset requests are also limited per address here (Parse Server limits them per client).

const { WindowCounter } = require('./windowCounter');

const LOGIN_PATH = /^\/(login|verifyPassword)\/?$/i;
const RESET_PATH = /^\/requestPasswordReset\/?$/i;
const TOO_MANY_REQUESTS = 100; // Parse's code for a refused request of this kind (CONNECTION_FAILED)

function createLoginNames({ db, resetLimit }) {
  const resets = new WindowCounter({ windowMs: resetLimit.windowMs });

  const stored = async (typed) => {
    if (typeof typed !== 'string' || typed === '' || typed.length > 320) {
      return null;
    }
    const rows = await db.any(
      `SELECT username, email, lower(username) = lower($1) AS by_username FROM "_User"
        WHERE lower(username) = lower($1) OR lower(email) = lower($1) LIMIT 3`, [typed]);
    return rows.find((r) => r.by_username) || rows[0] || null;
  };

  const resolveLogin = async (fields) => {
    for (const key of ['username', 'email']) {
      const account = await stored(fields[key]);
      if (account) {
        fields[key] = key === 'username' ? account.username : (account.email ?? fields[key]);
      }
    }
  };

  // A GET names the account in its query string, which is written back once resolved.
  const resolveQuery = async (req) => {
    const query = req.url.indexOf('?');
    const params = new URLSearchParams(query < 0 ? '' : req.url.slice(query + 1));
    const fields = Object.fromEntries(params);
    await resolveLogin(fields);
    for (const key of ['username', 'email']) {
      if (fields[key] !== undefined) {
        params.set(key, fields[key]);
      }
    }
    req.url = `${req.path}?${params}`;
    req.originalUrl = req.url;
  };

  return async function loginNames(req, res, next) {
    try {
      if (LOGIN_PATH.test(req.path) && (req.method === 'GET' || req.method === 'POST')) {
        await (req.method === 'GET' ? resolveQuery(req) : resolveLogin(req.body));
      } else if (/^\/batch\/?$/i.test(req.path) && req.method === 'POST' && Array.isArray(req.body?.requests)) {
        for (const sub of req.body.requests) {
          if (LOGIN_PATH.test(sub?.path ?? '') && sub.body && typeof sub.body === 'object') {
            await resolveLogin(sub.body);
          }
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

module.exports = { createLoginNames };
