/** What the numbers mean that the module's functions return (npm/module/session.h). */
const codes = [
  undefined,
  "UNREADABLE",
  "TOO_COMPLEX",
  "BAD_SIZE",
  "TIMEOUT",
  "REFUSED",
  "BAD_OPTION",
  "OUT_OF_MEMORY",
];

export const statusOf = (code) => codes.indexOf(code);

const messages = {
  OUT_OF_MEMORY: "there is not enough memory for it; choose a smaller size",
};

/** Why a drawing could not be checked, rewritten or drawn; `code` is for programs, `message` for people. */
export class OzmiraError extends Error {
  constructor(code, message, details) {
    super(message || messages[code]);
    this.name = "OzmiraError";
    this.code = code;
    Object.assign(this, details);
  }

  static ofStatus(status, message, details) {
    return new OzmiraError(codes[status] ?? "CRASHED", message, details);
  }
}
