// Script lines: how words are written, and which ones the page has sent.

const PLAIN = /^[A-Za-z0-9_.:+\/,@%=-]+$/;

// A word as a script reads it.
export function quote(word: string): string {
  if (PLAIN.test(word)) return word;
  if (!word.includes("'")) return `'${word}'`;
  return `"${word.replace(/[\\"]/g, "\\$&")}"`;
}

export function line(...words: (string | number)[]): string {
  return words.map(word => quote(String(word))).join(" ");
}

const KEY = "kzdraw-script";

// What was done, for "Copy as script". Kept over a reload, as the session is.
export class Recording {
  private lines: string[] = JSON.parse(sessionStorage.getItem(KEY) ?? "[]");

  add(done: string): void {
    if (done.startsWith("print")) return;
    this.lines.push(done);
    sessionStorage.setItem(KEY, JSON.stringify(this.lines.slice(-5000)));
  }

  clear(): void {
    this.lines = [];
    sessionStorage.removeItem(KEY);
  }

  text(): string {
    return this.lines.map(one => one + "\n").join("");
  }
}
