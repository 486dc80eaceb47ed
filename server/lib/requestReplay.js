'use strict';
// Answers a retried write with the answer of its first attempt.
//
// A client whose answer was lost sends the same write again with the same X-Parse-Request-Id.
// Parse Server's own idempotency only refuses such a retry (code 159), so the client would
// never learn the objectId, session or file name it made. This middleware keeps the answer of
// every write that carries a request id, in PostgreSQL (shared by every node, kept across
// restarts), and gives it again to a retry from the same user (any of their sessions, or no
// session for a sign-up) with the same method, path and body. Any other use of a known id is
// refused with code 159. Bodies are never kept, only a hash of them; finds sent as POST
// (`_method`) are never kept; the table is bounded in bytes and in age.

const crypto = require('crypto');

const DUPLICATE_REQUEST = 159;
const WRITE_METHODS = new Set(['POST', 'PUT', 'DELETE']);
const PATHS = /^\/(classes\/[^/]+(\/[^/]+)?|users(\/[^/]+)?|installations(\/[^/]+)?|functions\/[^/]+|files\/[^/]+)\/?$/;
const MAX_ANSWER_BYTES = 64 * 1024; // an answer to a write is a few hundred bytes
const ROW_OVERHEAD_BYTES = 200;
const PENDING_LIMIT_MS = 120 * 1000; // an attempt still unanswered after this is taken as lost
const PRUNE_EVERY_MS = 30 * 1000;

const sha256 = (data) => crypto.createHash('sha256').update(data).digest('hex');

function createRequestReplay({ db, ttlDays, maxBytes }) {
  const inFlight = new Map(); // request key -> promise settled when this node has answered
  let lastPrune = 0;

  const callerOf = async (req) => {
    const token = req.get('X-Parse-Session-Token');
    if (!token) {
      return '';
    }
    const row = await db.oneOrNone(
      'SELECT "user" FROM "_Session" WHERE "sessionToken" = $1 AND ("expiresAt" IS NULL OR "expiresAt" > now())',
      [token]);
    return row ? row.user : null;
  };

  const prune = () => {
    const now = Date.now();
    if (now - lastPrune < PRUNE_EVERY_MS) {
      return;
    }
    lastPrune = now;
    db.none(`DELETE FROM vantrel_replay WHERE created_at < now() - make_interval(days => $1)
               OR (state = 'pending' AND created_at < now() - make_interval(secs => $2));
             DELETE FROM vantrel_replay WHERE request_key IN (
               SELECT request_key FROM (
                 SELECT request_key, sum(coalesce(octet_length(answer), 0) + $3)
                   OVER (ORDER BY created_at DESC, request_key) AS kept
                 FROM vantrel_replay) newest_first
               WHERE kept > $4)`,
    [ttlDays, PENDING_LIMIT_MS / 1000, ROW_OVERHEAD_BYTES, maxBytes]).catch(() => {});
  };

  const findRow = (key) => db.oneOrNone(
    `SELECT caller, fingerprint, state, status, content_type, answer,
            created_at < now() - make_interval(days => $2) AS expired,
            state = 'pending' AND created_at < now() - make_interval(secs => $3) AS abandoned
       FROM vantrel_replay WHERE request_key = $1`, [key, ttlDays, PENDING_LIMIT_MS / 1000]);

  // Waits for an attempt that another node (or an earlier process) is still answering.
  const settledRow = async (key) => {
    for (let waited = 0; waited < 30000; waited += 250) {
      const row = await findRow(key);
      if (!row || row.state !== 'pending' || row.abandoned) {
        return row;
      }
      await new Promise((resolve) => setTimeout(resolve, 250));
    }
    return findRow(key);
  };

  const refuseDuplicate = (res) =>
    res.status(400).json({ code: DUPLICATE_REQUEST, error: 'Duplicate request' });

  const replay = (res, row) => {
    res.status(row.status);
    res.set('Content-Type', row.content_type || 'application/json');
    res.set('X-Parse-Request-Replayed', 'true');
    res.end(row.answer);
  };

  // Lets the first attempt through and keeps its answer.
  const record = (req, res, next, key) => {
    let settle;
    inFlight.set(key, new Promise((resolve) => { settle = resolve; }));
    const chunks = [];
    let size = 0;
    const write = res.write.bind(res);
    const end = res.end.bind(res);
    const keep = (chunk, encoding) => {
      if (chunk && typeof chunk !== 'function' && size <= MAX_ANSWER_BYTES) {
        const bytes = Buffer.isBuffer(chunk) ? chunk : Buffer.from(chunk, typeof encoding === 'string' ? encoding : 'utf8');
        size += bytes.length;
        chunks.push(bytes);
      }
    };
    res.write = (chunk, encoding, ...rest) => {
      keep(chunk, encoding);
      return write(chunk, encoding, ...rest);
    };
    let finished = null;
    const finish = (kept) => {
      finished ??= (kept
        ? db.none(`UPDATE vantrel_replay SET state = 'done', status = $2, content_type = $3, answer = $4
                    WHERE request_key = $1`,
        [key, res.statusCode, String(res.get('Content-Type') || ''), Buffer.concat(chunks)])
        : db.none('DELETE FROM vantrel_replay WHERE request_key = $1', [key]))
        .catch(() => {})
        .finally(() => {
          inFlight.delete(key);
          settle();
        });
      return finished;
    };
    // The answer is kept before it leaves, so that a retry after a crash finds it. A server
    // error leaves it unknown whether the write happened: the row goes, and Parse Server's own
    // idempotency refuses a retry if the write got that far.
    res.end = (chunk, encoding, ...rest) => {
      keep(chunk, encoding);
      finish(res.statusCode < 500 && size <= MAX_ANSWER_BYTES).then(() => end(chunk, encoding, ...rest));
      return res;
    };
    res.on('close', () => {
      if (!res.writableFinished) {
        finish(false);
      }
    });
    next();
  };

  const handle = async (req, res, next, requestId) => {
    const caller = await callerOf(req);
    if (caller === null) {
      return next(); // an invalid session: Parse Server answers it
    }
    const body = Buffer.isBuffer(req.body) ? req.body : JSON.stringify(req.body ?? {});
    const fingerprint = sha256([req.method, req.path.replace(/\/$/, ''), sha256(body)].join('\n'));
    const key = sha256(requestId);
    prune();
    for (let attempt = 0; attempt < 2; attempt += 1) {
      await inFlight.get(key);
      let row = await findRow(key);
      if (row && row.state === 'pending' && !row.abandoned) {
        row = await settledRow(key);
      }
      if (row && (row.expired || row.abandoned)) {
        await db.none('DELETE FROM vantrel_replay WHERE request_key = $1', [key]);
        row = null;
      }
      if (row) {
        if (row.caller !== caller || row.fingerprint !== fingerprint || row.state !== 'done') {
          return refuseDuplicate(res);
        }
        return replay(res, row);
      }
      const inserted = await db.oneOrNone(
        `INSERT INTO vantrel_replay (request_key, caller, fingerprint) VALUES ($1, $2, $3)
         ON CONFLICT DO NOTHING RETURNING request_key`, [key, caller, fingerprint]);
      if (inserted) {
        return record(req, res, next, key);
      }
    }
    return refuseDuplicate(res);
  };

  return function requestReplay(req, res, next) {
    const requestId = req.get('X-Parse-Request-Id');
    const findByPost = req.body && typeof req.body === 'object' && !Buffer.isBuffer(req.body) && '_method' in req.body;
    if (!requestId || !WRITE_METHODS.has(req.method) || !PATHS.test(req.path) || findByPost) {
      return next();
    }
    handle(req, res, next, requestId).catch(next);
    return undefined;
  };
}

module.exports = { createRequestReplay };
