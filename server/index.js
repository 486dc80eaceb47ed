'use strict';
// The Vantrel PRO local backend: Parse Server on PostgreSQL, mounted at the origin's root,
// listening on loopback only, with LiveQuery for messages, the operator's static pages under
// /site and development outboxes for mail and notices. Started by server/supervisor.js, which
// server/backend runs.

const fs = require('fs');
const http = require('http');
const settingsModule = require('./lib/settings');

function log(message) {
  process.stdout.write(`[vantrel-backend] ${message}\n`);
}

// The REST routes a client may use; everything else (roles, schemas, sessions, push, hooks,
// jobs, config, aggregates, built-in classes the app does not use) is for the master key only.
const CLIENT_ROUTES = [
  'health',
  'classes/(Freelancer|FreelanceCategory|FreelanceSubCategory|Message|LiveStream|NewsHotSpot|TrendingSubject)(/[A-Za-z0-9]+)?',
  'users(/[A-Za-z0-9]+)?',
  'installations(/[A-Za-z0-9]+)?',
  'login',
  'logout',
  'verifyPassword',
  'requestPasswordReset',
  'functions/(SendSMS|sendgridEmail)',
  'batch',
];

// Parse Server logs failing triggers and functions with their input; those lines would hold
// people's addresses and whatever text a caller sends.
const QUIET_LOG_LEVELS = {
  triggerAfter: 'silent',
  triggerBeforeSuccess: 'silent',
  triggerBeforeError: 'silent',
  cloudFunctionSuccess: 'silent',
  cloudFunctionError: 'silent',
  signupUsernameTaken: 'silent',
};

async function main() {
  // Everything the backend writes (logs, files, outboxes) is for the owner's eyes only.
  process.umask(0o077);
  const settings = settingsModule.load();
  const { limits } = settings;
  for (const dir of [settings.filesDir, settings.logsDir]) {
    fs.mkdirSync(dir, { recursive: true, mode: 0o700 });
  }
  // Parse Server writes ./logs on import and the files adapter writes under ./files:
  // both must land in the data directory.
  process.chdir(settings.dataDir);
  process.env.PARSE_SERVER_LOGS_FOLDER = settings.logsDir;
  // A promise nobody waited for is a fault to log, not a reason to stop serving everyone.
  process.on('unhandledRejection', (error) => log(`unhandled rejection: ${String(error?.message ?? error).slice(0, 200)}`));

  const express = require('express');
  const { ParseServer } = require('parse-server');
  const FSFilesAdapter = require('@parse/fs-files-adapter');
  const { definitions, messagePartnerKeys } = require('./lib/schema');
  const { createMailAdapter } = require('./lib/mailAdapter');
  const { LogSink } = require('./lib/logSink');
  const db = await require('./lib/db').open(settings.databaseURI());
  const { createRequestGuard } = require('./lib/requestGuard');
  const { createLoginNames } = require('./lib/loginNames');
  const { createLoginLockout } = require('./lib/loginLockout');
  const liveQueryAccess = require('./lib/liveQueryAccess').createLiveQueryAccess();
  const { createRequestReplay } = require('./lib/requestReplay');
  const { rateLimits } = require('./lib/rateLimits');
  const providers = require('./lib/providers');
  const newsroom = require('./lib/newsroom');
  const fileRules = require('./lib/fileRules');
  let parse;
  const masterKey = settingsModule.readSecret(settings.masterKeyFile);
  // Parse Server's own lockout counts failures that never expire; this one forgets them after
  // its window (lib/loginLockout.js, applied by lib/loginNames.js).
  const lockout = createLoginLockout({
    db,
    secret: masterKey,
    threshold: limits.lockoutThreshold,
    windowMs: limits.lockoutWindowMs,
    lockMs: limits.lockoutMinutes * 60 * 1000,
  });

  const parseServer = new ParseServer({
    appId: settings.appId,
    appName: 'Vantrel PRO',
    clientKey: settings.clientKey,
    masterKey,
    masterKeyIps: ['127.0.0.1', '::1'],
    readOnlyMasterKeyIps: ['127.0.0.1', '::1'],
    allowAggregationForReadOnlyMasterKey: false,
    databaseURI: settings.databaseURI(),
    serverURL: settings.serverURL,
    publicServerURL: settings.serverURL,
    mountPath: '/',
    loggerAdapter: new LogSink({ logsFolder: settings.logsDir }),
    logLevel: 'warn',
    logLevels: QUIET_LOG_LEVELS,
    filesAdapter: new FSFilesAdapter(),
    emailAdapter: createMailAdapter(settings.mailOutbox),
    allowClientClassCreation: false,
    enableAnonymousUsers: false,
    enforcePrivateUsers: true,
    routeAllowList: CLIENT_ROUTES,
    // Users see all of their own record; triggers see whole records so that the permission
    // rules can compare a flag's old and new value.
    protectedFieldsOwnerExempt: true,
    protectedFieldsTriggerExempt: true,
    protectedFieldsSaveResponseExempt: true,
    maxLimit: 1000,
    maxUploadSize: `${limits.uploadBytes}b`,
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
    // Behind the replay answers (lib/requestReplay.js): refuses a retry whose first attempt
    // reached Parse Server but left no answer to replay.
    idempotencyOptions: {
      paths: ['classes/.*', 'users$', 'users/.*', 'installations.*', 'functions/.*'],
      ttl: limits.replayDays * 24 * 3600,
    },
    rateLimit: rateLimits(settings),
    liveQuery: { classNames: ['Message'] },
    verifyServerUrl: false,
    cloud: (Parse) => {
      parse = Parse;
      const filesBaseURL = `${settings.serverURL}/files/${settings.appId}`;
      const beforeEveryWrite = (request) => fileRules.completeFileReferences(Parse, request.object, filesBaseURL);
      const notices = require('./lib/notices').register(Parse, settings, {
        providers: { sms: providers.smsGateway(settings.sms), email: providers.sendGrid(settings.sendgrid) },
        log,
      });
      require('./lib/userRules').register(Parse, {
        onDeletionRequested: notices.onDeletionRequested,
        onSessionsEnded: () => liveQueryAccess.closeEndedSessions(Parse),
        onPasswordChanged: (user) => lockout.forgive(user.get('username')),
        beforeEveryWrite,
      });
      liveQueryAccess.register(Parse);
      require('./lib/recordRules').register(Parse, { beforeEveryWrite });
      fileRules.register(Parse, { db, bytesPerDay: limits.uploadBytesPerDay });
    },
  });
  await parseServer.start();

  const app = express();
  app.disable('x-powered-by');
  app.use('/site', express.static(settings.siteDir, { index: false, dotfiles: 'ignore' }));
  app.use('/site', (req, res) => res.status(404).type('text/plain').send('Not found\n'));
  app.use(createRequestGuard({ uploadLimit: limits.uploadBytes, selectableUserKeys: ['objectId', ...messagePartnerKeys] }));
  app.use(createLoginNames({ db, resetLimit: limits.passwordResetPerAddress, lockout }));
  app.use(createRequestReplay({ db, ttlDays: limits.replayDays, maxBytes: limits.replayBytes }));
  app.use('/', parseServer.app);
  app.use((req, res) => res.status(404).json({ code: 119, error: 'No such route.' }));
  // eslint-disable-next-line no-unused-vars
  app.use((error, req, res, next) => {
    log(`request failed: ${String(error?.message ?? error).slice(0, 200)}`);
    if (!res.headersSent) {
      res.status(error?.status >= 400 && error.status < 500 ? error.status : 500)
        .json({ code: 1, error: 'The request could not be handled.' });
    }
  });

  const server = http.createServer(app);
  await new Promise((resolve, reject) => {
    server.once('error', reject);
    server.listen(settings.port, settings.host, resolve);
  });
  liveQueryAccess.attach(await ParseServer.createLiveQueryServer(server, {
    appId: settings.appId,
    serverURL: settings.serverURL,
    // LiveQuery accepts a connection when any one listed key matches, so listing the
    // application id (which every connect frame carries) would let any key through.
    keyPairs: { clientKey: settings.clientKey },
  }));
  // Cloud code reaches Parse Server through the app built above.
  await newsroom.synchronise(parse);
  await require('./lib/db').migrate(db);
  log(`listening on ${settings.origin} (pid ${process.pid})`);

  const shutdown = (signal) => {
    log(`${signal}: shutting down`);
    server.close();
    server.closeAllConnections?.();
    Promise.resolve(parseServer.handleShutdown?.())
      .then(() => db.$pool.end())
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
