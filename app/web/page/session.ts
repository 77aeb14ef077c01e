// The session of this tab: sends script lines, one request after the other, and tells what they changed.

import { Recording } from "./script";
import type { Answer, State } from "./types";

export class SessionError extends Error {
  constructor(message: string, readonly ended: boolean) { super(message); }
}

const KEY = "kzdraw-session";

async function request(path: string, options: RequestInit): Promise<any> {
  let response: Response;
  try {
    response = await fetch(path, options);
  } catch {
    throw new SessionError("kzdraw does not answer: is it still running?", true);
  }
  if (response.ok) return response.json();
  const reason = await response.json().then(body => body.error as string, () => `the request was refused (${response.status})`);
  throw new SessionError(reason, response.status === 410 || response.status === 403);
}

export class Session {
  readonly recording = new Recording();
  // Grows with every line that may have changed what is shown.
  changes = 0;
  // What the last line left.
  state: State | null = null;
  onState: (state: State) => void = () => {};
  onProgress: (progress: { line: string; seconds: number } | null) => void = () => {};
  onEnded: (reason: string) => void = () => {};

  private last: Promise<unknown> = Promise.resolve();
  private waiting = 0;
  private leaves = false;
  private events: EventSource | null = null;

  private constructor(readonly name: string, readonly files: string[]) {}

  // The session that this tab had before it was loaded again, else a new one.
  static async start(): Promise<Session> {
    const kept = sessionStorage.getItem(KEY);
    if (kept) {
      const { name, files } = JSON.parse(kept);
      const session = new Session(name, files);
      try {
        await session.send(["print state"]);
        return session.listen();
      } catch (error) {
        if (!(error instanceof SessionError) || !error.ended) throw error;
      }
    }
    const { session: name, files } = await request("/sessions", { method: "POST" });
    sessionStorage.setItem(KEY, JSON.stringify({ name, files }));
    const session = new Session(name, files);
    session.recording.clear();
    return session.listen();
  }

  path(rest: string): string { return `/sessions/${this.name}/${rest}`; }

  private listen(): Session {
    window.addEventListener("pagehide", () => { this.leaves = true; });  // which closes the events, too
    this.events = new EventSource(this.path("events"));
    this.events.addEventListener("progress", event => this.onProgress(JSON.parse(event.data)));
    this.events.addEventListener("change", () => {  // perhaps another tab's: a copy of this one has its session
      if (this.waiting === 0) this.send(["print state"]).catch(() => {});
    });
    this.events.addEventListener("error", () => {
      if (this.events?.readyState === EventSource.CLOSED && !this.leaves) this.onEnded("The session has ended.");
    });
    return this;
  }

  // Runs the lines up to the first that does not work. The answers are those of the lines that ran.
  send(lines: string[]): Promise<Answer[]> {
    const sent = this.last.catch(() => {}).then(() => this.sendNow(lines));
    this.last = sent;
    return sent;
  }

  private async sendNow(lines: string[]): Promise<Answer[]> {
    this.waiting++;
    try {
      const { answers } = await request(this.path("lines"), {
        method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify({ lines }),
      }) as { answers: Answer[] };
      answers.forEach((answer, i) => { if (!answer.error) this.recording.add(lines[i]); });
      if (lines.some(line => !/^(print|select)\b/.test(line))) this.changes++;
      const state = answers[answers.length - 1]?.state;
      if (state) {
        this.state = state;
        this.onState(state);
      }
      return answers;
    } catch (error) {
      if (error instanceof SessionError && error.ended) this.onEnded(error.message);
      throw error;
    } finally {
      this.waiting--;
      if (this.waiting === 0) document.documentElement.dataset.idle = String(Number(document.documentElement.dataset.idle ?? 0) + 1);
    }
  }

  // The JSON values that the lines print, all of them; the first line that does not work is raised.
  async ask(...lines: string[]): Promise<any[]> {
    const answers = await this.send(lines);
    const failed = answers.find(answer => answer.error !== null);
    if (failed) throw new SessionError(failed.error!, false);
    return answers.flatMap(answer => answer.output);
  }

  // Hands a file over, which lines can open then.
  async upload(file: File): Promise<void> {
    await request(this.path(`files?name=${encodeURIComponent(file.name)}`), {
      method: "POST", headers: { "Content-Type": "application/octet-stream" }, body: file,
    });
  }
}
