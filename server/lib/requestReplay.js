'use strict';
// Answers a retried write with the answer of its first attempt.
//
// Parse Server's own idempotency (idempotencyOptions) applies a write carrying an
// X-Parse-Request-Id only once, but answers the retry with error 159 "Duplicate request", so a
// client whose first answer was lost never learns the new objectId or session. This middleware
// sits in front of Parse Server: it keeps the answer of each write with a request id for a few
// minutes and replays it to an identical retry (same id, caller, path and body). Parse
// Server's check stays behind it for retries that arrive after a restart.

const crypto = require('crypto');
const express = require('express');

const WRITE_METHODS = new Set(['POST', 'PUT']);
const PATHS = /^\/(classes\/[^/]+(\/[^/]+)?|users(\/[^/]+)?|installations(\/[^/]+)?|functions\/[^/]+)\/?$/;

function createRequestReplay({ ttlMs = 300000, maxEntries = 5000, bodyLimit = '20mb' } = {}) {
  const entries = new Map(); // key -> { expires, done: Promise, status, type, body }
  const parseJson = express.json({ type: () => true, limit: bodyLimit });

  const prune = (now) => {
    for (const [key, entry] of entries) {
      if (entry.expires > now && entries.size <= maxEntries) {
        break;
      }
      entries.delete(key);
    }
  };

  const keyOf = (req, requestId) =>
    crypto
      .createHash('sha256')
      .update([requestId, req.get('X-Parse-Session-Token') || '', req.method, req.path,
        JSON.stringify(req.body === undefined ? null : req.body)].join('\0'))
      .digest('hex');

  const replay = (res, entry) => {
    res.status(entry.status);
    res.set('Content-Type', entry.type || 'application/json');
    res.set('X-Parse-Request-Replayed', 'true');
    res.end(entry.body);
  };

  return function requestReplay(req, res, next) {
    const requestId = req.get('X-Parse-Request-Id');
    if (!requestId || !WRITE_METHODS.has(req.method) || !PATHS.test(req.path)) {
      return next();
    }
    parseJson(req, res, (error) => {
      if (error) {
        return next(error);
      }
      const now = Date.now();
      prune(now);
      const key = keyOf(req, requestId);
      const known = entries.get(key);
      if (known) {
        known.done.then(() => (known.status ? replay(res, known) : next()));
        return undefined;
      }

      let settle;
      const entry = { expires: now + ttlMs, done: new Promise((resolve) => { settle = resolve; }) };
      entries.set(key, entry);
      const chunks = [];
      const write = res.write.bind(res);
      const end = res.end.bind(res);
      res.write = (chunk, ...rest) => {
        if (chunk) chunks.push(Buffer.from(chunk));
        return write(chunk, ...rest);
      };
      res.end = (chunk, ...rest) => {
        if (chunk && typeof chunk !== 'function') chunks.push(Buffer.from(chunk));
        return end(chunk, ...rest);
      };
      res.on('finish', () => {
        // Server errors are not kept: whether the write happened is unknown, so a retry
        // goes to Parse Server again.
        if (res.statusCode < 500) {
          entry.status = res.statusCode;
          entry.type = res.get('Content-Type');
          entry.body = Buffer.concat(chunks);
        } else {
          entries.delete(key);
        }
        settle();
      });
      res.on('close', () => {
        if (!res.writableFinished) {
          entries.delete(key);
          settle();
        }
      });
      return next();
    });
    return undefined;
  };
}

module.exports = { createRequestReplay };
