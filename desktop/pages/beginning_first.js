'use strict';

// Runs at the start of each long code page and shows its beginning first.
//
// The engine lays out and paints a text or a table as one piece, and its colours come before the
// first frame: half a second for 100 KB, minutes for 50 MB. A person sees one screenful of it. So
// what lies below is held back, a shorter text by some hundred milliseconds, a longer one until
// somebody goes there; with all of it shown, the page is what its own script makes of it.

(() => {
  if (!location.search.includes('&show=beginning-first')) return;

  /** Who walks through a folder has gone on by then, and the next page need not wait for this. */
  const kPause = 400; // milliseconds
  /** What is completed without being asked for, which keeps the page busy for a second or two. */
  const kSoonCompleted = { characters: 256 * 1024, cells: 30 * 1000 };
  /** Beyond it colours take longer than anybody waits for the end of a text. */
  const kMostColoured = 1024 * 1024; // characters
  /** Where the language is to be guessed, the library colours the text in each that it knows. */
  const kCostOfGuess = 16;
  const kGrowth = 4;

  const kLeastLineHeight = 16; // pixels
  const kLeastRowHeight = 30; // pixels
  const kLongestBeginning = 16 * 1024; // characters
  /** A line is cut in two where its end is further away. */
  const kLongestLine = 4 * 1024; // characters
  /** How many of a column's cells are tried for its width. */
  const kTriedCells = 4;

  const screenful = Math.max(screen.height, innerHeight);
  const firstRows = Math.ceil(screenful / kLeastRowHeight) + 1;

  const held = new CSSStyleSheet();
  const hold = (selector) => held.replaceSync(`${selector} { display: none !important; }`);
  document.adoptedStyleSheets = [held];
  hold(`#content > pre, #content tr:nth-child(n + ${firstRows + 1})`);

  /** The end of the line that `at` lies in. */
  function endOfLine(text, at) {
    const feed = text.indexOf('\n', at);
    const end = feed < 0 ? text.length : feed + 1;
    if (end - at <= kLongestLine) return end;
    const isWithinPair = (text.charCodeAt(at) & 0xfc00) === 0xdc00;
    return isWithinPair ? at + 1 : at;
  }

  /** Where the text of the first screen ends. */
  function endOfScreenful(text) {
    let end = 0;
    for (let lines = Math.ceil(screenful / kLeastLineHeight); lines > 0; --lines) {
      const feed = text.indexOf('\n', end);
      if (feed < 0 || feed > kLongestBeginning) return kLongestBeginning;
      end = feed + 1;
    }
    return end;
  }

  /** Puts other nodes with the same text into `element`, and the selection where it was. */
  function keepSelection(element, change) {
    const selection = getSelection();
    const isWithin =
      element.contains(selection.anchorNode) && element.contains(selection.focusNode);
    if (selection.isCollapsed || !isWithin) return change();
    const offsetOf = (node, offset) => {
      const before = document.createRange();
      before.selectNodeContents(element);
      before.setEnd(node, offset);
      return before.toString().length;
    };
    const placeAt = (offset) => {
      const texts = document.createTreeWalker(element, NodeFilter.SHOW_TEXT);
      while (texts.nextNode()) {
        if (offset <= texts.currentNode.length) return [texts.currentNode, offset];
        offset -= texts.currentNode.length;
      }
      return [element, element.childNodes.length];
    };
    const anchor = offsetOf(selection.anchorNode, selection.anchorOffset);
    const focus = offsetOf(selection.focusNode, selection.focusOffset);
    change();
    selection.setBaseAndExtent(...placeAt(anchor), ...placeAt(focus));
  }

  /** Blocks of code, one after the other, coloured here and not by the page's own loop. */
  class Blocks {
    constructor(elements, content) {
      const text = content.textContent;
      this.size = text.length;
      this.beginning = endOfScreenful(text);
      this.elements = elements;
      this.library = window.hljs;
      this.colour = this.library?.highlightElement;
      this.isSoonCompleted =
        this.size * this.costOf(elements[0]) <= kSoonCompleted.characters;
      this.completed = 0; // blocks
      this.before = 0; // characters in these
      this.text = null; // all that is to stand in the block after these, of which
      this.shown = 0; // characters stand in it now
      if (this.library) this.library.highlightElement = () => {};
    }

    languageOf(element) {
      const [, name] = /\blanguage-(\S+)/.exec(element.className) ?? [];
      return name;
    }
    costOf(element) {
      return this.library && this.languageOf(element) === undefined ? kCostOfGuess : 1;
    }

    /** Shows the first `count` characters, or a few more. */
    show(count) {
      while (this.completed < this.elements.length && count > this.before) {
        const element = this.elements[this.completed];
        this.text ??= element.textContent;
        const end = endOfLine(this.text, Math.min(count - this.before, this.text.length));
        if (end < this.text.length) {
          keepSelection(element, () => this.showPart(element, end));
          break;
        }
        keepSelection(element, () => this.complete(element));
      }
      const visible = this.completed + (this.shown > 0 ? 1 : 0);
      hold(`#content > pre:nth-child(n + ${visible + 1})`);
    }

    showPart(element, end) {
      const language = this.languageOf(element);
      if (this.before + end <= kMostColoured && language && this.library?.getLanguage(language)) {
        const part = this.text.slice(0, end);
        element.innerHTML = this.library.highlight(part, { language, ignoreIllegals: true }).value;
        element.classList.add('hljs');
      } else if (this.shown === 0) {
        element.textContent = this.text.slice(0, end);
      } else {
        element.append(this.text.slice(this.shown, end));
      }
      this.shown = end;
    }

    complete(element) {
      const size = this.text.length;
      if ((this.before + size) * this.costOf(element) <= kMostColoured) {
        if (this.shown > 0) element.textContent = this.text;
        this.colour?.(element);
      } else if (this.shown > 0) {
        element.append(this.text.slice(this.shown));
      }
      this.before += size;
      ++this.completed;
      this.text = null;
      this.shown = 0;
    }

    finish() {
      hold('#none');
      if (this.library) this.library.highlightElement = this.colour;
    }
  }

  /** The rows of a table. Its columns have their final widths from the beginning. */
  class Rows {
    constructor(rows) {
      this.size = rows.length;
      this.beginning = firstRows;
      this.isSoonCompleted = rows.length * rows[0].cells.length <= kSoonCompleted.cells;
      this.widest = this.copyWidest(rows);
      rows[0].closest('table').append(this.widest);
    }

    /**
     * Rows of copies of the cells that decide the columns' widths: by their length, and by that of
     * the longest word where the table is wider than the page. They stand below all that is seen.
     */
    copyWidest(rows) {
      const columns = [];
      const keep = (kept, length, cell) => {
        if (kept.length === kTriedCells && length <= kept.at(-1).length) return;
        kept.push({ length, cell });
        kept.sort((one, other) => other.length - one.length);
        kept.length = Math.min(kept.length, kTriedCells);
      };
      let cells = 0;
      for (let i = firstRows; i < rows.length && cells < kSoonCompleted.cells; ++i) {
        cells += rows[i].cells.length;
        Array.from(rows[i].cells).forEach((cell, column) => {
          const { byLength, byWord } = (columns[column] ??= { byLength: [], byWord: [] });
          const text = cell.textContent;
          // The letters of the East, and most signs, are twice as wide as those of the West.
          const wide = /[\u1100-\uffff]/.test(text) ? text.length : 0;
          keep(byLength, text.length + wide, cell);
          keep(byWord, Math.max(...text.split(/[\s-]/).map((word) => word.length)) + wide, cell);
        });
      }
      const copyOf = (cell) => cell?.cloneNode(true) ?? document.createElement('td');
      const body = document.createElement('tbody');
      body.style.visibility = 'hidden';
      for (let i = 0; i < kTriedCells; ++i)
        for (const kind of ['byLength', 'byWord']) {
          const copies = columns.map((column) => copyOf(column[kind][i]?.cell));
          const row = document.createElement('tr');
          row.append(...copies);
          body.append(row);
        }
      return body;
    }

    /** Shows the first `count` rows. */
    show(count) {
      hold(`#content tr:nth-child(n + ${count + 1})`);
    }

    finish() {
      this.widest.remove();
      hold('#none');
    }
  }

  /** What the page consists of; nothing where it shows a sentence instead. */
  function partsOf(content) {
    const blocks = Array.from(content.querySelectorAll(':scope > pre > code'));
    if (blocks.length > 0) return new Blocks(blocks, content);
    const rows = content.querySelectorAll('tr');
    return rows.length > 0 ? new Rows(rows) : null;
  }

  let isAllWanted = false;
  let showAll = () => { isAllWanted = true; };

  function begin() {
    const content = document.getElementById('content');
    const parts = partsOf(content);
    if (!parts) return hold('#none');
    let shown = 0;

    function show(amount) {
      if (shown === parts.size) return;
      shown = Math.min(amount, parts.size);
      parts.show(shown);
      if (shown < parts.size) return;
      parts.finish();
      content.removeAttribute('aria-busy');
    }
    showAll = () => show(parts.size);
    const isNearEnd = () => scrollY + 2 * innerHeight > document.documentElement.scrollHeight;
    const growAtEnd = () => isNearEnd() && show(shown * kGrowth);

    const isShort = parts.size <= 2 * parts.beginning;
    show(isShort || isAllWanted ? parts.size : parts.beginning);
    addEventListener('scroll', growAtEnd, { passive: true });
    addEventListener('resize', growAtEnd);
    if (!parts.isSoonCompleted || shown === parts.size) return;
    content.setAttribute('aria-busy', 'true');
    requestAnimationFrame(() => setTimeout(showAll, kPause));
  }

  // Before the page's own handler, which comes later to its listeners.
  addEventListener('load', begin);
  addEventListener('lumisk-show-all', () => showAll());
  addEventListener('keydown', (key) => {
    if (key.ctrlKey && key.key.toLowerCase() === 'a') showAll();
  }, true);
})();
