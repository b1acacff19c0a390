#include "mail/smtp_session.h"
