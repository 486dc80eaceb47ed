'use strict';
// The cloud functions that tell a message's recipient: "SendSMS" (text message) and
// "sendgridEmail" (e-mail). With a provider configured they deliver through it; without one
// each notice is kept in the NoticeOutbox class and as a JSON line in the notice outbox file,
// so a developer sees what would have gone out.

const { FileOutbox } = require('./fileOutbox');

const EMAIL_RULE = /^[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,64}$/;
const PHONE_RULE = /^\+?[0-9][0-9 ()-]*$/;

function textParam(Parse, params, name, maxLength) {
  const value = params[name];
  if (typeof value !== 'string' || value.trim() === '') {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, `parameter "${name}" is required and must be text`);
  }
  if (value.length > maxLength) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR,
      `parameter "${name}" is longer than ${maxLength} characters`);
  }
  return value;
}

function validateSms(Parse, params) {
  const message = textParam(Parse, params, 'message', 1600);
  const phone = textParam(Parse, params, 'phone', 32).trim();
  const digits = phone.replace(/[^0-9]/g, '');
  if (!PHONE_RULE.test(phone) || digits.length < 6 || digits.length > 15) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR,
      'parameter "phone" must be a telephone number of 6 to 15 digits, optionally starting with +');
  }
  return { recipient: phone, subject: '', body: message };
}

function validateEmail(Parse, params) {
  const toEmail = textParam(Parse, params, 'toEmail', 254).trim();
  if (!EMAIL_RULE.test(toEmail)) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'parameter "toEmail" must be an e-mail address');
  }
  const subject = textParam(Parse, params, 'subject', 200);
  if (/[\r\n]/.test(subject)) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'parameter "subject" must be a single line');
  }
  const body = textParam(Parse, params, 'body', 20000);
  return { recipient: toEmail, subject, body };
}

// Delivery through a JSON SMS gateway: POST {to, from, message} with a bearer token.
async function sendSms(settings, notice) {
  const response = await fetch(settings.url, {
    method: 'POST',
    headers: {
      'Content-Type': 'application/json',
      ...(settings.token ? { Authorization: `Bearer ${settings.token}` } : {}),
    },
    body: JSON.stringify({ to: notice.recipient, from: settings.sender, message: notice.body }),
    signal: AbortSignal.timeout(15000),
  });
  if (!response.ok) {
    throw new Error(`SMS gateway answered HTTP ${response.status}`);
  }
}

// Delivery through SendGrid's v3 mail API.
async function sendEmail(settings, notice) {
  const response = await fetch(settings.url, {
    method: 'POST',
    headers: { 'Content-Type': 'application/json', Authorization: `Bearer ${settings.apiKey}` },
    body: JSON.stringify({
      personalizations: [{ to: [{ email: notice.recipient }] }],
      from: { email: settings.from },
      subject: notice.subject,
      content: [{ type: 'text/plain', value: notice.body }],
    }),
    signal: AbortSignal.timeout(15000),
  });
  if (!response.ok) {
    throw new Error(`SendGrid answered HTTP ${response.status}`);
  }
}

// The notice functions are limited per signed-in user (Parse Server's rateLimit option,
// applied before the function runs); a rule set from Cloud Code would be lost when the
// server finishes starting, so index.js passes these to the server's options. Parse Server
// exempts callers on 127.0.0.1 as "internal" unless told otherwise, and every caller of
// this loopback backend comes from there.
function rateLimits(settings) {
  return ['SendSMS', 'sendgridEmail'].map((name) => ({
    requestPath: `/functions/${name}`,
    requestMethods: ['POST'],
    requestTimeWindow: settings.noticeRateWindowMs,
    requestCount: settings.noticeRateLimit,
    zone: 'user',
    includeInternalRequests: true,
    errorResponseMessage: 'Too many notices: please wait a minute and try again.',
  }));
}

function register(Parse, settings, logger) {
  const outbox = new FileOutbox(settings.noticeOutbox);

  const channels = [
    { name: 'SendSMS', channel: 'sms', validate: validateSms,
      provider: settings.sms.url ? (n) => sendSms(settings.sms, n) : null },
    { name: 'sendgridEmail', channel: 'email', validate: validateEmail,
      provider: settings.sendgrid.apiKey ? (n) => sendEmail(settings.sendgrid, n) : null },
  ];

  for (const { name, channel, validate, provider } of channels) {
    Parse.Cloud.define(name, async (request) => {
      const notice = validate(Parse, request.params || {});
      let delivery = 'outbox';
      let deliveryError = '';
      if (provider) {
        try {
          await provider(notice);
          delivery = 'sent';
        } catch (error) {
          delivery = 'failed';
          deliveryError = String(error.message || error);
          logger.error(`${name}: delivery failed: ${deliveryError}`);
        }
      }
      const record = new Parse.Object('NoticeOutbox');
      record.set({ channel, ...notice, requestedBy: request.user, delivery, deliveryError });
      record.setACL(new Parse.ACL());
      await record.save(null, { useMasterKey: true });
      outbox.append({ channel, ...notice, requestedBy: request.user.id, delivery, id: record.id });
      if (delivery === 'failed') {
        throw new Parse.Error(Parse.Error.SCRIPT_FAILED, `${name}: the notice could not be delivered`);
      }
      return { delivery, id: record.id };
    }, { requireUser: true });
  }
}

module.exports = { register, rateLimits, validateSms, validateEmail };
