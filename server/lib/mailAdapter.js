'use strict';
// Parse Server's e-mail adapter for development: every mail (password reset, verification)
// lands as one JSON line in the mail outbox instead of leaving the machine.

const { FileOutbox } = require('./fileOutbox');

function createMailAdapter(file) {
  const outbox = new FileOutbox(file);
  return {
    sendMail({ to, subject, text }) {
      outbox.append({ to, subject, text });
      return Promise.resolve();
    },
  };
}

module.exports = { createMailAdapter };
