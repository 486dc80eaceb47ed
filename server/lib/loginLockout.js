'use strict';
// The record of failed password checks behind the lockout: `threshold` failures of one sign-in
// name within a rolling window of `windowMs` lock that name for `lockMs`.
//
// A name is locked whether or not an account carries it, so the answers tell nobody which
// accounts exist; a stranger's name can be locked no longer and no more cheaply than an
// account's. Names are kept only as a keyed hash, in PostgreSQL, so every node of the backend
// and a restart see the same record; rows older than the window are pruned.
//
// An attempt is booked as a failure before the password is checked and struck out once it
// proved right, so that attempts sent in parallel cannot outnumber the threshold.

const crypto = require('crypto');

const PRUNE_EVERY_MS = 60 * 1000;

function createLoginLockout({ db, secret, threshold, windowMs, lockMs }) {
  let lastPrune = 0;
  const keyOf = (name) => crypto.createHmac('sha256', secret).update(name.toLowerCase()).digest('hex');
  // Serialises the attempts on one name, across nodes.
  const exclusive = (key, work) => db.tx(async (t) => {
    await t.one('SELECT pg_advisory_xact_lock(hashtextextended($1, 0))', [key]);
    return work(t);
  });
  const failuresInWindow = (t, key) => t.one(
    `SELECT count(*)::int AS n FROM vantrel_login_failure
      WHERE account = $1 AND at > now() - make_interval(secs => $2)`, [key, windowMs / 1000]);

  const prune = () => {
    if (Date.now() - lastPrune < PRUNE_EVERY_MS) {
      return;
    }
    lastPrune = Date.now();
    db.none(`DELETE FROM vantrel_login_failure WHERE at <= now() - make_interval(secs => $1);
             DELETE FROM vantrel_login_lock WHERE until <= now()`, [windowMs / 1000]).catch(() => {});
  };

  return {
    lockMinutes: Math.ceil(lockMs / 60000),

    // Answers { locked: true }, or an attempt to settle once the password was checked.
    begin: (name) => {
      const key = keyOf(name);
      return exclusive(key, async (t) => {
        const lock = await t.oneOrNone('SELECT 1 FROM vantrel_login_lock WHERE account = $1 AND until > now()', [key]);
        if (lock || (await failuresInWindow(t, key)).n >= threshold) {
          return { locked: true };
        }
        const { id } = await t.one('INSERT INTO vantrel_login_failure (account) VALUES ($1) RETURNING id', [key]);
        return { key, id };
      });
    },

    // A right password strikes the attempt out; a wrong one keeps it and may lock the name.
    settle: async ({ key, id }, failed) => {
      if (!failed) {
        await db.none('DELETE FROM vantrel_login_failure WHERE id = $1', [id]);
        return;
      }
      prune();
      await exclusive(key, async (t) => {
        if ((await failuresInWindow(t, key)).n >= threshold) {
          await t.none(`INSERT INTO vantrel_login_lock (account, until) VALUES ($1, now() + make_interval(secs => $2))
                        ON CONFLICT (account) DO UPDATE SET until = EXCLUDED.until`, [key, lockMs / 1000]);
        }
      });
    },

    // A new password ends the lock and forgets the failures (a lost password is reset by mail).
    forgive: async (name) => {
      if (typeof name !== 'string') {
        return;
      }
      const key = keyOf(name);
      return db.none(`DELETE FROM vantrel_login_failure WHERE account = $1;
                      DELETE FROM vantrel_login_lock WHERE account = $1`, [key]);
    },
  };
}

module.exports = { createLoginLockout };
