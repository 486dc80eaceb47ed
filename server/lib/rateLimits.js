'use strict';
// Parse Server's rate limits (its `rateLimit` option): per client address on sign-in, sign-up
// and password-reset requests; per account and for the whole server on the notice functions.
// Parse Server exempts callers on 127.0.0.1 as "internal" unless told otherwise, and every
// caller of this loopback backend comes from there, so every rule includes them. The paths are
// matched after the request guard has put them into one spelling, and Parse Server applies the
// same rules to the requests inside a /batch.

function rule(requestPath, requestMethods, { count, windowMs }, zone, errorResponseMessage) {
  return {
    requestPath,
    requestMethods,
    requestTimeWindow: windowMs,
    requestCount: count,
    zone,
    includeInternalRequests: true,
    errorResponseMessage,
  };
}

function rateLimits({ limits }) {
  const slowDown = 'Too many attempts from this address: please wait a minute and try again.';
  const notices = ['SendSMS', 'sendgridEmail'].flatMap((name) => [
    rule(`/functions/${name}`, ['POST'], limits.notice, 'user',
      'Too many notices: please wait a minute and try again.'),
    rule(`/functions/${name}`, ['POST'], limits.noticeGlobal, 'global',
      'The server is sending too many notices: please try again later.'),
  ]);
  return [
    rule('/login', ['GET', 'POST'], limits.login, 'ip', slowDown),
    rule('/verifyPassword', ['GET', 'POST'], limits.login, 'ip', slowDown),
    rule('/users', ['POST'], limits.signUp, 'ip', slowDown),
    rule('/requestPasswordReset', ['POST'], limits.passwordReset, 'ip', slowDown),
    ...notices,
  ];
}

module.exports = { rateLimits };
