'use strict';
// The HTTP services that deliver notices when configured: an SMS gateway (POST {to, from,
// message} as JSON with a bearer token) and SendGrid's v3 mail API. Each answers an adapter
// with `send(notice)`, or null when its URL or key is not configured.

const TIMEOUT_MS = 15000;

async function post(url, headers, body, what) {
  const response = await fetch(url, {
    method: 'POST',
    headers: { 'Content-Type': 'application/json', ...headers },
    body: JSON.stringify(body),
    signal: AbortSignal.timeout(TIMEOUT_MS),
  });
  if (!response.ok) {
    throw new Error(`${what} answered HTTP ${response.status}`);
  }
}

function smsGateway({ url, token, sender }) {
  if (!url) {
    return null;
  }
  return {
    send: (notice) => post(url, token ? { Authorization: `Bearer ${token}` } : {},
      { to: notice.recipient, from: sender, message: notice.body }, 'the SMS gateway'),
  };
}

function sendGrid({ url, apiKey, from }) {
  if (!apiKey) {
    return null;
  }
  return {
    send: (notice) => post(url, { Authorization: `Bearer ${apiKey}` }, {
      personalizations: [{ to: [{ email: notice.recipient }] }],
      from: { email: from },
      subject: notice.subject,
      content: [{ type: 'text/plain', value: notice.body }],
    }, 'SendGrid'),
  };
}

module.exports = { smsGateway, sendGrid };
