'use strict';
// The cloud functions that tell people about a message or a deletion request: "SendSMS" (text
// message) and "sendgridEmail" (e-mail). They keep the app's names and parameters, but the
// server decides whether a notice may go:
// - the new-message notices go only to the other party of a Message the caller saved in the
//   last ten minutes (their mobile number, or their work e-mail address), with the app's texts;
// - a deletion notice goes to the operator's administrator, whatever address the client names,
//   and only with the app's text for the caller's own account;
// - everything else is refused and nothing is sent.
// With a provider configured a notice is delivered through it; without one it lands in the
// outbox (the master-only NoticeOutbox class and a JSON-lines file), and the function's result
// says which ("sent" or "outbox").

const { FileOutbox } = require('./fileOutbox');

const TEXTS = {
  sms: 'You have a new Vantrel Message please check the app',
  mailSubject: 'New Vantrel Message',
  mailBody: 'You have a new message in Vantrel, please check the app.',
  deletionSubject: 'Delete Freelancer Profile - Vantrel Message',
};
const RECENT_MS = 10 * 60 * 1000;
const DAY_MS = 24 * 60 * 60 * 1000;
const EMAIL_RULE = /^[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,64}$/;
const PHONE_RULE = /^\+?[0-9][0-9 ()-]*$/;
const master = { useMasterKey: true };

// The app's deletion notice for an account.
function deletionBody(user) {
  return `There is a new request from ${user.get('firstName') ?? ''} ${user.get('lastName') ?? ''}` +
    ' to delete their profile.  Be sure to delete the user and freelancer objects. \n\n' +
    `Please delete any messages where to & from user == ${user.id}` +
    `\n\nThe user's email address they used to register was ${user.get('username')}`;
}

function textParam(Parse, params, name, maxLength) {
  const value = params[name];
  if (typeof value !== 'string' || value.trim() === '') {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, `parameter "${name}" is required and must be text`);
  }
  if (value.length > maxLength) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, `parameter "${name}" is longer than ${maxLength} characters`);
  }
  return value;
}

function smsParams(Parse, params) {
  const message = textParam(Parse, params, 'message', 1600);
  const phone = textParam(Parse, params, 'phone', 32).trim();
  const digits = phone.replace(/[^0-9]/g, '');
  if (!PHONE_RULE.test(phone) || digits.length < 6 || digits.length > 15) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR,
      'parameter "phone" must be a telephone number of 6 to 15 digits, optionally starting with +');
  }
  return { phone, message };
}

function mailParams(Parse, params) {
  const toEmail = textParam(Parse, params, 'toEmail', 254).trim();
  if (!EMAIL_RULE.test(toEmail)) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'parameter "toEmail" must be an e-mail address');
  }
  const subject = textParam(Parse, params, 'subject', 200);
  if (/[\r\n]/.test(subject)) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'parameter "subject" must be a single line');
  }
  return { toEmail, subject, body: textParam(Parse, params, 'body', 20000) };
}

// The recipients of the Messages the caller saved in the last ten minutes.
async function recentRecipients(Parse, caller) {
  const messages = await new Parse.Query('Message').equalTo('from', caller)
    .greaterThanOrEqualTo('updatedAt', new Date(Date.now() - RECENT_MS)).include('to').limit(50).find(master);
  return messages.map((m) => m.get('to')).filter(Boolean);
}

function register(Parse, settings, { providers, log }) {
  const outbox = new FileOutbox(settings.noticeOutbox);

  const refuse = (name, caller, reason) => {
    log(`${name}: refused for user ${caller.id}: ${reason}`);
    return new Parse.Error(Parse.Error.OPERATION_FORBIDDEN, `${name}: ${reason}`);
  };

  const recentDeletionNotice = (userId) => new Parse.Query('NoticeOutbox').equalTo('kind', 'deletion')
    .equalTo('requestedBy', Parse.User.createWithoutData(userId))
    .greaterThanOrEqualTo('createdAt', new Date(Date.now() - RECENT_MS)).first(master);

  const checkDailyCap = async (name, caller) => {
    const sent = await new Parse.Query('NoticeOutbox').equalTo('requestedBy', caller)
      .greaterThanOrEqualTo('createdAt', new Date(Date.now() - DAY_MS)).count(master);
    if (sent >= settings.limits.noticesPerDay) {
      log(`${name}: refused for user ${caller.id}: daily cap reached`);
      throw new Parse.Error(Parse.Error.REQUEST_LIMIT_EXCEEDED,
        `${name}: this account has sent its ${settings.limits.noticesPerDay} notices for today`);
    }
  };

  const deliver = async (notice) => {
    const provider = providers[notice.channel];
    let delivery = 'outbox';
    let deliveryError = '';
    if (provider) {
      try {
        await provider.send(notice);
        delivery = 'sent';
      } catch (error) {
        delivery = 'failed';
        deliveryError = String(error.message || error);
        log(`${notice.kind} notice of user ${notice.requestedBy.id} not delivered: ${deliveryError}`);
      }
    }
    const record = new Parse.Object('NoticeOutbox');
    record.set({ ...notice, delivery, deliveryError });
    record.setACL(new Parse.ACL());
    await record.save(null, master);
    if (delivery === 'outbox') {
      const { channel, kind, recipient, subject, body } = notice;
      outbox.append({ channel, kind, recipient, subject, body, requestedBy: notice.requestedBy.id, id: record.id });
    }
    if (delivery === 'failed') {
      throw new Parse.Error(Parse.Error.SCRIPT_FAILED, 'the notice could not be delivered');
    }
    return { delivery, id: record.id };
  };

  const deletionNotice = (user) => deliver({
    channel: 'email', kind: 'deletion', recipient: settings.administratorEmail,
    subject: TEXTS.deletionSubject, body: deletionBody(user), requestedBy: user,
  });

  Parse.Cloud.define('SendSMS', async (request) => {
    const { phone, message } = smsParams(Parse, request.params || {});
    const caller = request.user;
    if (message !== TEXTS.sms) {
      throw refuse('SendSMS', caller, 'only the new-message notice can be sent');
    }
    const recipients = await recentRecipients(Parse, caller);
    const joined = (u) => `${u.get('mobileCountryCode') ?? ''}${u.get('mobileTelephoneNumber') ?? ''}`;
    if (!recipients.some((u) => joined(u) === phone)) {
      throw refuse('SendSMS', caller, 'the number is not that of someone you sent a message in the last 10 minutes');
    }
    await checkDailyCap('SendSMS', caller);
    return deliver({ channel: 'sms', kind: 'message', recipient: phone, subject: '', body: message, requestedBy: caller });
  }, { requireUser: true });

  Parse.Cloud.define('sendgridEmail', async (request) => {
    const { toEmail, subject, body } = mailParams(Parse, request.params || {});
    const caller = request.user;
    if (subject === TEXTS.deletionSubject) {
      const account = await new Parse.Query(Parse.User).get(caller.id, master);
      if (body !== deletionBody(account)) {
        throw refuse('sendgridEmail', caller, 'a deletion notice must be the one for your own account');
      }
      const earlier = await recentDeletionNotice(caller.id);
      return earlier ? { delivery: earlier.get('delivery'), id: earlier.id } : deletionNotice(account);
    }
    if (subject !== TEXTS.mailSubject || body !== TEXTS.mailBody) {
      throw refuse('sendgridEmail', caller, 'only the new-message notice and the deletion notice can be sent');
    }
    const recipients = await recentRecipients(Parse, caller);
    const address = toEmail.toLowerCase();
    const recipient = recipients.find((u) => (u.get('workEmail') || '').toLowerCase() === address);
    if (!recipient) {
      throw refuse('sendgridEmail', caller, 'the address is not that of someone you sent a message in the last 10 minutes');
    }
    await checkDailyCap('sendgridEmail', caller);
    return deliver({
      channel: 'email', kind: 'message', recipient: recipient.get('workEmail'), subject, body, requestedBy: caller,
    });
  }, { requireUser: true });

  // Called when an account asks to be deleted: the administrator hears of it once, whether or
  // not the app's own notice (sent at the same moment) arrived before the sessions ended.
  return {
    async onDeletionRequested(user) {
      if (!(await recentDeletionNotice(user.id))) {
        await deletionNotice(await new Parse.Query(Parse.User).get(user.id, master));
      }
    },
  };
}

module.exports = { register, TEXTS };
