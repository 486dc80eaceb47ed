'use strict';
// The backend's own tables beside Parse Server's, in the same PostgreSQL database: answers to
// retried writes, the upload ledger and the failed sign-ins behind the lockout. Shared by every
// node of the backend, so a retry, a quota or a lockout is honoured whichever node answers.

const pgp = require('pg-promise')({ noWarnings: true });

const TABLES = `
CREATE TABLE IF NOT EXISTS vantrel_replay (
  request_key  text PRIMARY KEY,
  caller       text NOT NULL,
  fingerprint  text NOT NULL,
  state        text NOT NULL DEFAULT 'pending',
  status       integer,
  content_type text,
  answer       bytea,
  created_at   timestamptz NOT NULL DEFAULT now()
);
CREATE INDEX IF NOT EXISTS vantrel_replay_created_at ON vantrel_replay (created_at);
CREATE TABLE IF NOT EXISTS vantrel_upload (
  user_id    text NOT NULL,
  bytes      bigint NOT NULL,
  created_at timestamptz NOT NULL DEFAULT now()
);
CREATE INDEX IF NOT EXISTS vantrel_upload_user ON vantrel_upload (user_id, created_at);
CREATE TABLE IF NOT EXISTS vantrel_login_failure (
  id      bigserial PRIMARY KEY,
  account text NOT NULL,
  at      timestamptz NOT NULL DEFAULT now()
);
CREATE INDEX IF NOT EXISTS vantrel_login_failure_account ON vantrel_login_failure (account, at);
CREATE TABLE IF NOT EXISTS vantrel_login_lock (
  account text PRIMARY KEY,
  until   timestamptz NOT NULL
);
`;

async function open(databaseURI) {
  const db = pgp({ connectionString: databaseURI, max: 5, application_name: 'vantrel-backend' });
  await db.none(TABLES);
  return db;
}

// Records written before the newsroom role existed were readable by every signed-in user:
// they become readable by their owner and newsroom accounts only.
async function migrate(db) {
  for (const table of ['"Freelancer"', '"LiveStream"']) {
    await db.none(`UPDATE ${table} SET _rperm = array_append(array_remove(_rperm, '*'), 'role:Newsroom')
                    WHERE '*' = ANY(_rperm)`);
  }
}

module.exports = { open, migrate };
