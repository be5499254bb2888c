// Appended to a copy of a generated page for the browser check. Once the
// page has loaded it looks at what the browser made of it, as a front end's
// script would, and writes its findings into <pre id="tq-check">, one a
// line, for the test to read back from the dumped DOM:
//   charset NAME        the encoding the browser decoded the page with
//   sound ADDRESS       each sound link's address, percent-encoded UTF-8
//   save ADDRESS        each save link's address
//   fail WHAT           a check that failed
//   done                the script ran to its end
// window.TQ_EXPECT, set before this script, says what to look for:
//   texts (percent-encoded UTF-8 strings that must be shown), anchors,
//   noInputs (no text box may be left).
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
