'use strict';
// The first look at every API request, before Parse Server sees it.
//
// - The path is brought into one canonical spelling (no doubled slashes, each segment
//   percent-encoded one way), so that rate limits and route rules, which match paths as
//   text, see "/functions/Send%53MS" as "/functions/SendSMS".
// - JSON bodies and the "where" of queries are read once, with a size limit, and refused
//   with a clear 4xx answer when they nest too deeply, hold NUL characters or carry typed
//   values ("__type") that are malformed: Parse Server would otherwise let some of these
//   reach code that throws outside any request and ends the process.
// - Uploads are read here too: at most the upload limit, and only images, judged by their
//   first bytes rather than by their name.

const { Buffer } = require('buffer');
const { posix } = require('path');
const { LOGIN_PATH } = require('./loginNames');

const PARSE = {
  OPERATION_FORBIDDEN: 119,
  INVALID_QUERY: 102,
  INVALID_POINTER: 106,
  INVALID_JSON: 107,
  INCORRECT_TYPE: 111,
  FILE_SAVE_ERROR: 130,
};

const MAX_DEPTH = 24;
const MAX_NODES = 50000;
const JSON_LIMIT_BYTES = 2 * 1024 * 1024;
const NAME_RULE = /^[A-Za-z_][A-Za-z0-9_]{0,63}$/;
const ID_RULE = /^[A-Za-z0-9_-]{1,64}$/;

class Refusal extends Error {
  constructor(status, code, message) {
    super(message);
    this.status = status;
    this.code = code;
  }
}

const refuse = (code, message, status = 400) => {
  throw new Refusal(status, code, message);
};

function isFiniteInRange(value, limit) {
  return typeof value === 'number' && Number.isFinite(value) && Math.abs(value) <= limit;
}

// Checks of the typed values of the REST encoding, by "__type".
const typedValueChecks = {
  Date: (v) => typeof v.iso === 'string' && !Number.isNaN(Date.parse(v.iso))
    || refuse(PARSE.INCORRECT_TYPE, 'a Date needs an ISO 8601 date and time in "iso"'),
  Pointer: (v) => (typeof v.className === 'string' && NAME_RULE.test(v.className)
    && typeof v.objectId === 'string' && ID_RULE.test(v.objectId))
    || refuse(PARSE.INVALID_POINTER, 'a Pointer needs a class name and an objectId'),
  Object: (v) => typeof v.className === 'string' && NAME_RULE.test(v.className)
    || refuse(PARSE.INCORRECT_TYPE, 'an Object needs a class name'),
  Relation: (v) => typeof v.className === 'string' && NAME_RULE.test(v.className)
    || refuse(PARSE.INCORRECT_TYPE, 'a Relation needs a class name'),
  GeoPoint: (v) => (isFiniteInRange(v.latitude, 90) && isFiniteInRange(v.longitude, 180))
    || refuse(PARSE.INCORRECT_TYPE, 'a GeoPoint needs a latitude from -90 to 90 and a longitude from -180 to 180'),
  File: (v) => (typeof v.name === 'string' && v.name.length > 0 && v.name.length <= 256
    && (v.url === undefined || typeof v.url === 'string'))
    || refuse(PARSE.INCORRECT_TYPE, 'a File needs the name of an upload'),
  Bytes: (v) => typeof v.base64 === 'string' || refuse(PARSE.INCORRECT_TYPE, 'Bytes need base64 text'),
  Polygon: (v) => (Array.isArray(v.coordinates) && v.coordinates.length >= 3
    && v.coordinates.every((p) => Array.isArray(p) && p.length === 2
      && isFiniteInRange(p[0], 90) && isFiniteInRange(p[1], 180)))
    || refuse(PARSE.INCORRECT_TYPE, 'a Polygon needs at least three [latitude, longitude] pairs'),
};

// Checks of the update operations of the REST encoding, by "__op".
const listOperation = (v) => Array.isArray(v.objects) || refuse(PARSE.INVALID_JSON, `${v.__op} needs a list in "objects"`);
const operationChecks = {
  Delete: () => true,
  Increment: (v) => (typeof v.amount === 'number' && Number.isFinite(v.amount))
    || refuse(PARSE.INVALID_JSON, 'Increment needs a number in "amount"'),
  Add: listOperation,
  AddUnique: listOperation,
  Remove: listOperation,
  AddRelation: listOperation,
  RemoveRelation: listOperation,
  Batch: (v) => Array.isArray(v.ops) || refuse(PARSE.INVALID_JSON, 'Batch needs a list in "ops"'),
};

// Walks a decoded JSON value: depth, size, NUL characters and typed values.
function inspect(root) {
  let nodes = 0;
  const visit = (value, depth) => {
    if (++nodes > MAX_NODES) {
      refuse(PARSE.INVALID_JSON, 'the request holds too many values');
    }
    if (typeof value === 'string') {
      if (value.includes('\u0000')) {
        refuse(PARSE.INVALID_JSON, 'text may not contain NUL characters');
      }
      return;
    }
    if (value === null || typeof value !== 'object') {
      return;
    }
    if (depth > MAX_DEPTH) {
      refuse(PARSE.INVALID_JSON, `the request nests deeper than ${MAX_DEPTH} levels`);
    }
    if (Array.isArray(value)) {
      value.forEach((item) => visit(item, depth + 1));
      return;
    }
    if (Object.prototype.hasOwnProperty.call(value, '__type')) {
      const check = typedValueChecks[value.__type];
      if (!check) {
        refuse(PARSE.INCORRECT_TYPE, 'unknown __type');
      }
      check(value);
    }
    if (typeof value.__op === 'string') {
      (operationChecks[value.__op] || (() => refuse(PARSE.INVALID_JSON, 'unknown __op')))(value);
    }
    for (const [key, item] of Object.entries(value)) {
      if (key.includes('\u0000')) {
        refuse(PARSE.INVALID_JSON, 'keys may not contain NUL characters');
      }
      visit(item, depth + 1);
    }
  };
  visit(root, 0);
  return root;
}

// `$select` and `$dontSelect` match on a key of another class's records. Of users, only the
// keys every signed-in reader may see can be matched on this way (Parse Server would answer
// "no match" for the others, which a caller cannot tell from a real "no match").
function checkSubQueries(value, selectableUserKeys) {
  if (value === null || typeof value !== 'object') {
    return;
  }
  for (const operator of ['$select', '$dontSelect']) {
    const sub = value[operator];
    if (sub && typeof sub === 'object' && sub.query?.className === '_User'
        && !selectableUserKeys.includes(String(sub.key).split('.')[0])) {
      refuse(PARSE.OPERATION_FORBIDDEN, `${operator} may not match on the key "${String(sub.key).slice(0, 64)}" of users`);
    }
  }
  Object.values(value).forEach((item) => checkSubQueries(item, selectableUserKeys));
}

function parseJson(text, what) {
  try {
    return JSON.parse(text);
  } catch {
    return refuse(PARSE.INVALID_JSON, `${what} is not valid JSON`);
  }
}

// One spelling per path: doubled slashes folded, each segment decoded and encoded again.
function canonicalPath(rawPath) {
  const segments = rawPath.split('/').filter((s) => s !== '');
  const decoded = segments.map((segment) => {
    let text;
    try {
      text = decodeURIComponent(segment);
    } catch {
      return refuse(PARSE.INVALID_JSON, 'the address is not valid', 400);
    }
    if (/[\u0000-\u001f]/.test(text)) {
      refuse(PARSE.INVALID_JSON, 'the address is not valid', 400);
    }
    return encodeURIComponent(text);
  });
  return `/${decoded.join('/')}${rawPath.endsWith('/') && decoded.length ? '/' : ''}`;
}

// The requests of a batch are routed by their paths too. A transaction is for the master key
// only: Parse Server answers a transaction that holds a refused request with a server error.
// Passwords are checked one request at a time, where the lockout sees them.
function checkBatch(req) {
  if (!/^\/batch\/?$/i.test(req.path) || !Array.isArray(req.body.requests)) {
    return;
  }
  if (req.body.transaction === true && !req.get('X-Parse-Master-Key')) {
    refuse(PARSE.OPERATION_FORBIDDEN, 'transactions are not available to clients; send the requests one by one');
  }
  for (const sub of req.body.requests) {
    if (sub && typeof sub === 'object' && typeof sub.path === 'string') {
      const query = sub.path.indexOf('?');
      // Parse Server resolves "." and ".." in the paths of a batch.
      const path = posix.join('/', canonicalPath(query < 0 ? sub.path : sub.path.slice(0, query)));
      sub.path = query < 0 ? path : path + sub.path.slice(query);
      if (LOGIN_PATH.test(path)) {
        refuse(PARSE.OPERATION_FORBIDDEN, 'sign-ins and password checks cannot be sent inside a batch');
      }
    }
  }
}

function readBody(req, limit, code) {
  return new Promise((resolve, reject) => {
    const tooLarge = () => new Refusal(413, code, `the request is larger than ${limit} bytes`);
    const declared = Number(req.headers['content-length']);
    if (Number.isFinite(declared) && declared > limit) {
      req.resume();
      reject(tooLarge());
      return;
    }
    const chunks = [];
    let size = 0;
    req.on('data', (chunk) => {
      size += chunk.length;
      if (size > limit) {
        req.removeAllListeners('data');
        req.resume();
        reject(tooLarge());
        return;
      }
      chunks.push(chunk);
    });
    req.on('end', () => resolve(Buffer.concat(chunks)));
    req.on('error', reject);
  });
}

// Image types a profile picture may have, by their first bytes.
const IMAGE_SIGNATURES = [
  (b) => b.length > 3 && b[0] === 0xff && b[1] === 0xd8 && b[2] === 0xff, // JPEG
  (b) => b.length > 8 && b.subarray(0, 8).equals(Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a])), // PNG
  (b) => b.length > 6 && /^GIF8[79]a$/.test(b.subarray(0, 6).toString('latin1')), // GIF
  (b) => b.length > 12 && b.subarray(0, 4).toString('latin1') === 'RIFF'
    && b.subarray(8, 12).toString('latin1') === 'WEBP', // WebP
];

const isImage = (bytes) => IMAGE_SIGNATURES.some((matches) => matches(bytes));

const isUpload = (req) => req.method === 'POST' && /^\/files\/[^/]+$/.test(req.path);
const hasJsonBody = (req) => !['GET', 'HEAD', 'OPTIONS'].includes(req.method)
  && !req.path.startsWith('/files/') && !req.path.startsWith('/apps/') && !req.is('multipart/form-data');

function createRequestGuard({ uploadLimit, selectableUserKeys }) {
  return async function requestGuard(req, res, next) {
    try {
      const master = Boolean(req.get('X-Parse-Master-Key'));
      const query = req.url.indexOf('?');
      const path = query < 0 ? req.url : req.url.slice(0, query);
      const canonical = canonicalPath(path);
      if (canonical !== path) {
        // Parse Server checks its route rules against the original URL.
        req.url = canonical + (query < 0 ? '' : req.url.slice(query));
        req.originalUrl = req.url;
      }
      if (typeof req.query?.where === 'string') {
        const where = inspect(parseJson(req.query.where, 'the "where" of the query'));
        if (!master) {
          checkSubQueries(where, selectableUserKeys);
        }
      }
      for (const key of ['keys', 'include', 'order', 'excludeKeys', 'redirectClassNameForKey']) {
        if (typeof req.query?.[key] === 'string' && req.query[key].includes('\u0000')) {
          refuse(PARSE.INVALID_QUERY, `"${key}" may not contain NUL characters`);
        }
      }
      if (isUpload(req)) {
        // Streaming uploads would pass by this check: every upload is read whole here.
        delete req.headers['x-parse-upload-mode'];
        const bytes = await readBody(req, uploadLimit, PARSE.FILE_SAVE_ERROR);
        if (!isImage(bytes)) {
          refuse(PARSE.FILE_SAVE_ERROR, 'only JPEG, PNG, GIF or WebP pictures can be uploaded');
        }
        req.body = bytes;
      } else if (hasJsonBody(req)) {
        const bytes = await readBody(req, JSON_LIMIT_BYTES, PARSE.INVALID_JSON);
        const text = bytes.toString('utf8');
        req.body = text.trim() === '' ? {} : inspect(parseJson(text, 'the request body'));
        if (req.body === null || typeof req.body !== 'object' || Array.isArray(req.body)) {
          refuse(PARSE.INVALID_JSON, 'the request body must be a JSON object');
        }
        if (!master) {
          checkSubQueries(req.body, selectableUserKeys);
        }
        checkBatch(req);
      }
    } catch (error) {
      if (!(error instanceof Refusal)) {
        return next(error);
      }
      return res.status(error.status).json({ code: error.code, error: error.message });
    }
    return next();
  };
}

module.exports = { createRequestGuard, canonicalPath, inspect, isImage, Refusal };
