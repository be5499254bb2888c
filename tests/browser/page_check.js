// Appended to a copy of a generated page for the browser check. Once the
// page has loaded it looks at what the browser made of it, as a front end's
// script would, and writes its findings into <pre id="tq-check">, one a
// line, for the test to read back from the dumped DOM:
//   charset NAME        the encoding the browser decoded the page with
//   sound ADDRESS       each sound link's address, percent-encoded UTF-8
//   save ADDRESS        each save link's address
//   choice D N L TEXT   exam question D (record N) answered through its radio
//                       group with the letter L that the name of answD gives,
//                       and the text of that option, percent-encoded UTF-8
//   blank ID TEXT       text box BlkID filled with the name of answID
//   fail WHAT           a check that failed
//   done                the script ran to its end
// window.TQ_EXPECT, set before this script, says what to look for:
//   texts (percent-encoded UTF-8 strings that must be shown), anchors,
//   noInputs (no text box may be left), choices (answer every choice
//   question), blanks (fill every text box).
(function () {
  var expect = window.TQ_EXPECT || {};

  function restoreUrlSentence(s) {
    return s.replace(/#/g, '?').replace(/~/g, '"');
  }

  // The text the page shows behind a link, up to the line break.
  function shownBeside(a) {
    var shown = '';
    for (var n = a.nextSibling; n && n.nodeName !== 'BR'; n = n.nextSibling) shown += n.textContent;
    return shown.replace(/^\u00a0/, '');
  }

  function check() {
    var out = [];
    function fail(what) { out.push('fail ' + what); }
    var text = document.body ? document.body.innerText : '';

    out.push('charset ' + document.characterSet);
    if (!/^(gbk|gb2312|gb18030)$/i.test(document.characterSet)) fail('decoded as ' + document.characterSet);
    if (text.indexOf('\ufffd') >= 0) fail('replacement character in the text');
    (expect.texts || []).forEach(function (t) {
      if (text.indexOf(decodeURIComponent(t)) < 0) fail('text not shown: ' + t);
    });
    (expect.anchors || []).forEach(function (name) {
      if (document.querySelectorAll('a[name="' + name + '"]').length !== 1) fail('anchor missing: ' + name);
    });

    Array.prototype.forEach.call(document.querySelectorAll('a[href]'), function (a) {
      var href = a.getAttribute('href');
      if (/^E[SN]/.test(href)) {
        out.push('sound ' + encodeURIComponent(href));
        var end = href.lastIndexOf('$');
        if (end < 0) fail('sound link without its end mark: ' + encodeURIComponent(href));
        var sentence = restoreUrlSentence(href.slice(2, end));
        if (sentence !== shownBeside(a)) fail('sound link ' + encodeURIComponent(href) + ' is not the sentence shown');
      } else if (/^A_/.test(href)) {
        out.push('save ' + href);
      }
    });

    Array.prototype.forEach.call(document.images, function (img) {
      if (!img.complete || img.naturalWidth === 0) fail('image not shown: ' + img.getAttribute('src'));
    });
    if (expect.noInputs && document.querySelectorAll('input').length !== 0) fail('a text box is left');

    // A front end's script answers a choice question by its radio group
    // "radio<d>" and learns the right letter from the name of "answ<d>",
    // "L-n" with n the record number.
    if (expect.choices) {
      for (var d = 1; document.getElementById('answ' + d); d++) {
        var parts = document.getElementById('answ' + d).getAttribute('name').split('-');
        var letter = parts[0];
        var group = document.getElementsByName('radio' + d);
        var chosen = null;
        Array.prototype.forEach.call(group, function (r) { if (r.value === letter) chosen = r; });
        if (!chosen) { fail('question ' + d + ' has no option ' + letter); continue; }
        chosen.click();
        var checked = Array.prototype.filter.call(group, function (r) { return r.checked; });
        if (checked.length !== 1 || checked[0].value !== letter) fail('question ' + d + ' did not take ' + letter);
        var cell = document.getElementById('Choice' + d + '-' + (letter.charCodeAt(0) - 65));
        var shown = cell ? cell.textContent.replace(/^[A-E]\)\s*/, '') : '';
        out.push('choice ' + d + ' ' + parts[1] + ' ' + letter + ' ' + encodeURIComponent(shown));
      }
    }
    // A fill-blank page: each text box "Blk<d>-<k>" has its answer in the
    // name of "answ<d>-<k>".
    if (expect.blanks) {
      Array.prototype.forEach.call(document.querySelectorAll('input[type=text]'), function (box) {
        var id = box.id.replace(/^Blk/, '');
        var answer = document.getElementById('answ' + id);
        if (!answer) return fail('text box ' + box.id + ' has no answer');
        box.focus();
        box.value = answer.getAttribute('name');
        box.dispatchEvent(new Event('input', { bubbles: true }));
        out.push('blank ' + id + ' ' + encodeURIComponent(box.value));
      });
    }

    out.push('done');
    var pre = document.createElement('pre');
    pre.id = 'tq-check';
    pre.textContent = '\n' + out.join('\n') + '\n';
    document.body.appendChild(pre);
  }

  window.addEventListener('load', function () {
    try {
      check();
    } catch (e) {
      var pre = document.createElement('pre');
      pre.id = 'tq-check';
      pre.textContent = '\nfail script error: ' + e + '\n';
      document.body.appendChild(pre);
    }
  });
})();
