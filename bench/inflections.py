#!/usr/bin/env python3
"""How well `tqcomm lookup` finds the base word of an inflected form, and
what that costs against an exact look-up, on the dictionary built from
WordNet (and CC-CEDICT when the cache has it).

  bench/inflections.py [--tool build/bin/tqcomm] [--dict DIR] [--rounds 3]

Two lists of forms, neither holding a form that is a headword of its own
(those show their own entry, by design, and are counted apart):
  irregular  every one-word form of WordNet's exception lists (*.exc) whose
             base is a headword; right when the lookup lands on one of the
             bases the list gives.
  regular    the inflected forms of 1,000 random headwords, made by plain
             suffix rules (every spelling: +s, +es, y->ies, +ed, +d,
             doubled +ed, e dropped +ing, ...) and kept only where a
             spelling word list (Debian's wbritish, wamerican) knows the form,
             so that the list holds real words spelt as people spell them
             and not the builder's own rules. Right when the lookup lands on
             the headword ("strict"), or on another headword that the same
             rules turn into that form ("coped" -> cope rather than cop).

Timing: the whole list through `tqcomm lookup --list` against the list of
the words the forms land on (each an exact hit), the start of the program
taken off; the look-up of a form should stay within 2x of an exact one.
"""
import argparse
import os
import random
import subprocess
import sys
import tempfile
import time

WORDNET = "/usr/share/wordnet"
WORD_LISTS = ["/usr/share/dict/british-english", "/usr/share/dict/american-english"]
TABLE = "base form, from the table of inflected forms"
RULES = "base form, by the library's suffix rules"


def headwords():
    words = {}
    for pos, name in (("n", "noun"), ("v", "verb"), ("a", "adj"), ("r", "adv")):
        with open(f"{WORDNET}/index.{name}", encoding="latin-1") as f:
            for line in f:
                if line.startswith(" "):
                    continue
                words.setdefault(line.split(" ", 1)[0].replace("_", " "), set()).add(pos)
    return words


def exceptions():
    pairs = {}
    for name in ("noun", "verb", "adj", "adv"):
        with open(f"{WORDNET}/{name}.exc", encoding="latin-1") as f:
            for line in f:
                parts = line.split()
                if len(parts) >= 2:
                    pairs.setdefault(parts[0], []).extend(parts[1:])
    return pairs


def naive_forms(w):
    """Every spelling a suffix rule may give, right or wrong."""
    out = {w + "s", w + "es", w + "ed", w + "d", w + "ing", w + "er", w + "r", w + "est", w + "st",
           w + w[-1] + "ed", w + w[-1] + "ing", w + w[-1] + "er", w + w[-1] + "est", w + "ked", w + "king"}
    if len(w) > 2:
        out |= {w[:-1] + "ies", w[:-1] + "ied", w[:-1] + "ier", w[:-1] + "iest", w[:-1] + "ing",
                w[:-2] + "ying", w + w[-1] + "es"}
    out.discard(w)
    return out


def lookup(tool, dictdir, words):
    with tempfile.NamedTemporaryFile("w", suffix=".txt", delete=False) as f:
        f.write("".join(w + "\n" for w in words))
        name = f.name
    try:
        start = time.perf_counter()
        run = subprocess.run([tool, "lookup", "--list", name, "--dict", dictdir], capture_output=True, text=True,
                             encoding="latin-1")
        seconds = time.perf_counter() - start
    finally:
        os.unlink(name)
    found = {}
    for line in run.stdout.splitlines():
        parts = line.split("\t")
        if len(parts) == 3:
            found[parts[0]] = (parts[1], parts[2])
    return found, seconds


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("--tool", default=os.path.join(here, "..", "build", "bin", "tqcomm"))
    ap.add_argument("--dict", default=os.environ.get("TQ_BENCH_DIR", "/tmp/tqcomm-bench-wordnet-cedict"))
    ap.add_argument("--rounds", type=int, default=3)
    ap.add_argument("--seed", type=int, default=2006)
    args = ap.parse_args()
    if not os.path.exists(os.path.join(args.dict, "base.idx")):
        print(f"== building {args.dict} from WordNet", flush=True)
        subprocess.run([args.tool, "dict", "build", WORDNET, "-o", args.dict], check=True, stdout=subprocess.DEVNULL)

    heads = headwords()
    exc = exceptions()

    # Irregular forms.
    irregular, own_entry = {}, 0
    for form, bases in exc.items():
        if "_" in form:
            continue
        bases = [b.replace("_", " ") for b in bases if b.replace("_", " ") in heads]
        if not bases:
            continue
        if form in heads:
            own_entry += 1
            continue
        irregular[form] = bases

    # Regular forms of random headwords, as a spelling list knows them.
    spelled = set()
    for path in WORD_LISTS:
        if os.path.exists(path):
            with open(path, encoding="utf-8", errors="replace") as f:
                spelled.update(w.strip() for w in f if w.strip().isalpha() and w.strip().islower())
    if not spelled:
        sys.exit("inflections: no spelling word list (install wbritish or wamerican)")
    rng = random.Random(args.seed)
    pool = sorted(w for w in heads if w.isalpha() and w.islower() and len(w) > 1 and w in spelled)
    rng.shuffle(pool)
    regular, chosen = {}, 0
    for w in pool:
        forms = [f for f in sorted(naive_forms(w)) if f in spelled and f not in heads and f not in exc]
        if not forms:
            continue
        chosen += 1
        for f in forms:
            regular.setdefault(f, w)
        if chosen == 1000:
            break

    found, _ = lookup(args.tool, args.dict, sorted(irregular) + sorted(regular))

    def tally(forms, right):
        hits = {}
        ok = 0
        for form in forms:
            word, how = found.get(form, ("", "not found"))
            hits[how] = hits.get(how, 0) + 1
            ok += right(form, word)
        return ok, hits

    irr_ok, irr_how = tally(irregular, lambda f, w: w in irregular[f])
    reg_strict, reg_how = tally(regular, lambda f, w: w == regular[f])
    reg_ok, _ = tally(regular, lambda f, w: w == regular[f] or (w != f and w in heads and f in naive_forms(w)))

    def show(name, ok, n, hits, target):
        print(f"{name}: {ok}/{n} = {100.0 * ok / max(n, 1):.2f}% land on a right base word (target {target}%)")
        for how, count in sorted(hits.items(), key=lambda kv: -kv[1]):
            print(f"    {count:6d}  {how}")

    show("irregular forms (WordNet's exception lists)", irr_ok, len(irregular), irr_how, 98)
    print(f"    ({own_entry} more forms of the lists are headwords of their own: lookup shows that entry"
          " and names the base)")
    show(f"regular forms of {chosen} random headwords", reg_ok, len(regular), reg_how, 95)
    print(f"    strict (the very headword): {reg_strict}/{len(regular)} = {100.0 * reg_strict / max(len(regular), 1):.2f}%")

    # Time: forms against the words they land on, each an exact hit.
    forms = sorted(set(irregular) | set(regular))
    targets = [found[f][0] for f in forms if f in found and found[f][0]]
    # Each list is gone through ten times in one run, so that the start of
    # the program weighs little beside the look-ups.
    best = {"forms": 1e9, "exact": 1e9, "start": 1e9}
    for _ in range(args.rounds):
        best["start"] = min(best["start"], lookup(args.tool, args.dict, [])[1])
        best["forms"] = min(best["forms"], lookup(args.tool, args.dict, forms * 10)[1])
        best["exact"] = min(best["exact"], lookup(args.tool, args.dict, targets * 10)[1])
    per_form = (best["forms"] - best["start"]) / (10 * len(forms)) * 1e6
    per_exact = (best["exact"] - best["start"]) / (10 * len(targets)) * 1e6
    print(f"time: {per_form:.1f} us a form ({len(forms)} forms), {per_exact:.1f} us an exact word "
          f"({len(targets)} words); ratio {per_form / per_exact:.2f} (target within 2x); program start "
          f"{best['start'] * 1000:.1f} ms taken off")


if __name__ == "__main__":
    main()
