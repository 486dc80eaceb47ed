'use strict';
// The Vantrel PRO local backend: Parse Server on PostgreSQL, mounted at the origin's root,
// listening on loopback only, with LiveQuery for messages, the operator's static pages under
// /site and development outboxes for mail and notices. Started by server/backend.

const fs = require('fs');
const http = require('http');
const settingsModule = require('./lib/settings');

// How long a write's X-Parse-Request-Id is remembered.
const IDEMPOTENCY_TTL_S = 300;

function log(message) {
  process.stdout.write(`[vantrel-backend] ${message}\n`);
}

async function main() {
  // Everything the backend writes (logs, files, outboxes) is for the owner's eyes only.
  process.umask(0o077);
  const settings = settingsModule.load();
  for (const dir of [settings.filesDir, settings.logsDir]) {
    fs.mkdirSync(dir, { recursive: true, mode: 0o700 });
  }
  // Parse Server writes ./logs on import and the files adapter writes under ./files:
  // both must land in the data directory.
  process.chdir(settings.dataDir);
  process.env.PARSE_SERVER_LOGS_FOLDER = settings.logsDir;

  const express = require('express');
  const { ParseServer } = require('parse-server');
  const FSFilesAdapter = require('@parse/fs-files-adapter');
  const { definitions } = require('./lib/schema');
  const { createMailAdapter } = require('./lib/mailAdapter');
  const permissions = require('./lib/permissions');
  const notices = require('./lib/notices');
  const { createRequestReplay } = require('./lib/requestReplay');

  const parseServer = new ParseServer({
    appId: settings.appId,
    appName: 'Vantrel PRO',
    clientKey: settings.clientKey,
    masterKey: settingsModule.readSecret(settings.masterKeyFile),
    masterKeyIps: ['127.0.0.1', '::1'],
    readOnlyMasterKeyIps: ['127.0.0.1', '::1'],
    allowAggregationForReadOnlyMasterKey: false,
    databaseURI: settings.databaseURI(),
    serverURL: settings.serverURL,
    publicServerURL: settings.serverURL,
    mountPath: '/',
    logsFolder: settings.logsDir,
    logLevel: 'warn',
    filesAdapter: new FSFilesAdapter(),
    emailAdapter: createMailAdapter(settings.mailOutbox),
    allowClientClassCreation: false,
    enableAnonymousUsers: false,
    enforcePrivateUsers: true,
    // Users see all of their own record; triggers see whole records so that the permission
    // rules can compare a flag's old and new value.
    protectedFieldsOwnerExempt: true,
    protectedFieldsTriggerExempt: true,
    protectedFieldsSaveResponseExempt: true,
    // File references may only point at this server's own files.
    fileUpload: { allowedFileUrlDomains: ['127.0.0.1'] },
    pages: { encodePageParamHeaders: true },
    installation: { duplicateDeviceTokenActionEnforceAuth: true },
    requestComplexity: {
      includeDepth: 10,
      includeCount: 100,
      subqueryDepth: 10,
      queryDepth: 10,
      graphQLDepth: 20,
      graphQLFields: 200,
      batchRequestLimit: 100,
    },
    schema: { definitions, lockSchemas: true, strict: true, keepUnknownIndexes: true },
    idempotencyOptions: {
      paths: ['classes/.*', 'users$', 'users/.*', 'installations.*', 'functions/.*'],
      ttl: IDEMPOTENCY_TTL_S,
    },
    rateLimit: notices.rateLimits(settings),
    liveQuery: { classNames: ['Message'] },
    verifyServerUrl: false,
    cloud: (Parse) => {
      permissions.register(Parse, { filesBaseURL: `${settings.serverURL}/files/${settings.appId}` });
      notices.register(Parse, settings, { error: log });
    },
  });
  await parseServer.start();

  const app = express();
  app.disable('x-powered-by');
  app.use('/site', express.static(settings.siteDir, { index: false, dotfiles: 'ignore' }));
  app.use('/site', (req, res) => res.status(404).type('text/plain').send('Not found\n'));
  app.use(createRequestReplay({ ttlMs: IDEMPOTENCY_TTL_S * 1000 }));
  app.use('/', parseServer.app);

  const server = http.createServer(app);
  await new Promise((resolve, reject) => {
    server.once('error', reject);
    server.listen(settings.port, settings.host, resolve);
  });
  await ParseServer.createLiveQueryServer(server, {
    appId: settings.appId,
    serverURL: settings.serverURL,
    // LiveQuery accepts a connection when any one listed key matches, so listing the
    // application id (which every connect frame carries) would let any key through.
    keyPairs: { clientKey: settings.clientKey },
  });
  log(`listening on ${settings.origin} (pid ${process.pid})`);

  const shutdown = (signal) => {
    log(`${signal}: shutting down`);
    server.close();
    server.closeAllConnections?.();
    Promise.resolve(parseServer.handleShutdown?.())
      .catch(() => {})
      .finally(() => process.exit(0));
    setTimeout(() => process.exit(0), 3000).unref();
  };
  process.on('SIGTERM', () => shutdown('SIGTERM'));
  process.on('SIGINT', () => shutdown('SIGINT'));
}

main().catch((error) => {
  process.stderr.write(`[vantrel-backend] failed to start: ${error && error.stack ? error.stack : error}\n`);
  process.exit(1);
});
